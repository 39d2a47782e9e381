// The library through its one import, where its client does not lead: refusals, odd shapes, null arguments.
#include "quarna_data_array/c_abi.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <functional>
#include <limits>
#include <memory>
#include <numeric>
#include <string>
#include <type_traits>
#include <vector>

namespace {

#define QUARNA_OPERATION(number, name, presence, result, arguments) \
    auto const name##_ = reinterpret_cast<quarna_##name##_function>(get_function_ptr(number));
#include "quarna_data_array/operations.def"

using Shape = std::vector<std::size_t>;
using Array = std::unique_ptr<quarna_array, quarna_destroy_array_function>;
constexpr std::size_t huge = std::numeric_limits<std::size_t>::max();

class Library : public testing::Test {
protected:
    quarna_factory* m_factory = nullptr;
    void* m_block = this;
    quarna_deleter m_deleter = std::free;

    void SetUp() override { ASSERT_EQ(create_factory_(&m_factory), 0); }
    void TearDown() override { destroy_factory_(m_factory); }

    Array create(std::int32_t type, Shape const& shape, int code = 0)
    {
        quarna_array* array = nullptr;
        EXPECT_EQ(create_array_(m_factory, type, shape.data(), shape.size(), &array), code);
        EXPECT_EQ(array == nullptr, code != 0);
        return Array(array, destroy_array_);
    }

    bool hasBlock() const { return m_block != nullptr && m_deleter != nullptr; }
};

TEST_F(Library, ShapesComeBackAsCreatedAndElementsAreZero)
{
    for (Shape const& shape : {Shape{}, {5}, {1, 1}, {2, 3, 4}, {0, huge, huge}, {3, 0}, Shape(10000, 1)}) {
        Array const array = create(3, shape);
        std::size_t length = huge;
        std::size_t const* dimensions = nullptr;
        EXPECT_EQ(get_dimensions_(array.get(), &length, &dimensions), 0);
        EXPECT_EQ(Shape(dimensions, dimensions + length), shape);
        bool const empty = std::count(shape.begin(), shape.end(), 0U) != 0;
        auto const count = empty ? 0 : std::accumulate(shape.begin(), shape.end(), 1L, std::multiplies<>());
        EXPECT_EQ(get_element_count_(array.get()), count);
        ASSERT_EQ(release_buffer_(array.get(), true, &m_block, &m_deleter), 0);
        auto const* elements = static_cast<double*>(m_block);
        EXPECT_EQ(std::count(elements, elements + count, 0.0), count);
        m_deleter(m_block);
        EXPECT_EQ(release_buffer_(array.get(), true, &m_block, &m_deleter), 20) << "nothing is left";
        EXPECT_FALSE(hasBlock());
    }
}

TEST_F(Library, RefusesWhatItCannotHold)
{
    struct {
        std::int32_t type;
        std::size_t count;
        int code;
    } const rows[]{{3, 1UL << 61, 26}, {22, 1UL << 60, 26}, {3, 1UL << 60, 26},        {5, 1UL << 63, 26},
                   {5, huge / 2, 19},  {3, 1UL << 59, 19},  {22, (1UL << 59) - 1, 19}, {2, 1, 20},
                   {-1, 1, 20},        {23, 1, 20}};
    for (auto const& [type, count, code] : rows) {
        create(type, {1, count}, code);
        EXPECT_EQ(create_buffer_(m_factory, &m_block, &m_deleter, type, count), code);
        EXPECT_FALSE(hasBlock()) << type;
    }
    create(3, {1UL << 32, 1UL << 32}, 26);
    for (std::size_t const dimensions : {1UL << 45, 1UL << 60, huge}) {
        quarna_array* array = nullptr;
        std::size_t const length = 1;
        EXPECT_EQ(create_array_(m_factory, 3, &length, dimensions, &array), 19) << dimensions;
    }
}

TEST_F(Library, WhatHandedItsBlockOverCannotBeCopied)
{
    for (Shape const& shape : {Shape{}, {5}, {2, 3}}) {
        Array const array = create(3, shape);
        ASSERT_EQ(release_buffer_(array.get(), true, &m_block, &m_deleter), 0);
        m_deleter(m_block);
        for (bool const soleHolder : {false, true}) {
            auto* unshared = reinterpret_cast<quarna_array*>(this);
            EXPECT_TRUE(unshare_(array.get(), soleHolder, &unshared));
            EXPECT_EQ(unshared, nullptr) << "nothing to write to";
        }
        EXPECT_EQ(get_element_count_(array.get()), 0U);
    }
}

TEST_F(Library, AnAdoptedBlockIsFreedOnceWhateverTheOutcome)
{
    static int freed;
    struct {
        std::int32_t type;
        std::size_t length;
        std::int32_t layout;
        int code;
    } const rows[]{{3, 2, 0, 0},     {3, 2, 1, 0},          {2, 2, 0, 20},
                   {3, huge, 0, 26}, {3, 1UL << 60, 0, 26}, {3, 2, 2, 23}};
    auto const free = [](void* block) { ++*static_cast<int*>(block); };
    for (auto const& [type, length, layout, code] : rows) {
        freed = 0;
        quarna_array* array = nullptr;
        EXPECT_EQ(adopt_buffer_in_order_(m_factory, type, &length, 1, &freed, free, &array, layout), code);
        EXPECT_EQ(array == nullptr, code != 0);
        EXPECT_EQ(freed, code != 0);
        destroy_array_(array);
        EXPECT_EQ(freed, 1) << code;
    }
}

TEST_F(Library, ReferencesReachPartsAndRefuseOtherTypesAndThePlacePastTheLast)
{
    Array const array = create(14, {2});
    quarna_reference* reference = nullptr;
    EXPECT_EQ(get_reference_(array.get(), 2, &reference), 1);
    ASSERT_EQ(get_reference_(array.get(), 1, &reference), 0);
    float const parts[] = {1.5F, -2.5F};
    EXPECT_EQ(set_complex_(reference, 14, &parts[0], &parts[1]), 0);
    EXPECT_EQ(set_complex_(reference, 4, &parts[0], &parts[1]), 8);
    void* real = nullptr;
    void* imaginary = nullptr;
    EXPECT_EQ(get_part_addresses_(reference, &real, &imaginary), 0);
    EXPECT_EQ(*static_cast<std::complex<float>*>(real), std::complex<float>(1.5F, -2.5F));
    EXPECT_EQ(*static_cast<float*>(imaginary), -2.5F);
    destroy_reference_(reference);

    quarna_iterator* const end = end_(array.get(), true);
    EXPECT_EQ(get_address_(end, &real), 8) << "it is complex";
    EXPECT_EQ(dereference_(end, &reference), 0);
    EXPECT_EQ(set_complex_(reference, 14, &parts[0], &parts[1]), 1);
    destroy_reference_(reference);
    destroy_iterator_(end);
}

TEST_F(Library, BlocksOfNoElementsAreBlocksAndNewOnesAreFilledInDebugBuilds)
{
    for (std::size_t const count : {0U, 2U}) {
        ASSERT_EQ(create_buffer_(m_factory, &m_block, &m_deleter, 5, count), 0);
        ASSERT_TRUE(hasBlock());
#ifdef QUARNA_DEBUG_FILL
        EXPECT_EQ(std::string(static_cast<char*>(m_block), count), std::string(count, '\xA5'));
#endif
        m_deleter(m_block);
    }
}

// Null for every argument: an error code, and nothing else happens.
template <class Result, class... Arguments>
void callWithNulls(Result (*function)(Arguments...), const char* name)
{
    if constexpr (std::is_same_v<Result, int>) {
        EXPECT_EQ(function(Arguments()...), 20) << name;
    } else if constexpr (sizeof...(Arguments) != 0) {
        function(Arguments()...);
    }
}

TEST_F(Library, NullsAndUnknownNumbersAreRefused)
{
#define QUARNA_OPERATION(number, name, presence, result, arguments) callWithNulls(name##_, #name);
#include "quarna_data_array/operations.def"
    for (int const number : {-1, 0, 2, 12, 61, 111, 116, 123, 1 << 30}) {
        EXPECT_EQ(get_function_ptr(number), nullptr) << number;
    }
}

}  // namespace
