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
#include <tuple>
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

    void SetUp() override { ASSERT_EQ(create_factory_(&m_factory), QUARNA_SUCCESS); }
    void TearDown() override { destroy_factory_(m_factory); }

    Array create(std::int32_t type, Shape const& shape, int code = QUARNA_SUCCESS)
    {
        quarna_array* array = nullptr;
        EXPECT_EQ(create_array_(m_factory, type, shape.data(), shape.size(), &array), code);
        EXPECT_EQ(array == nullptr, code != QUARNA_SUCCESS);
        return Array(array, destroy_array_);
    }

    bool hasBlock() const { return m_block != nullptr && m_deleter != nullptr; }
};

TEST_F(Library, ShapesComeBackAsCreatedAndElementsAreZero)
{
    for (Shape const& shape : {Shape{}, {5}, {1, 1}, {2, 3, 4}, {0, huge, huge}, {3, 0}, Shape(10000, 1)}) {
        Array const array = create(QUARNA_TYPE_DOUBLE, shape);
        std::size_t length = huge;
        std::size_t const* dimensions = nullptr;
        EXPECT_EQ(get_dimensions_(array.get(), &length, &dimensions), QUARNA_SUCCESS);
        EXPECT_EQ(Shape(dimensions, dimensions + length), shape);
        bool const empty = std::count(shape.begin(), shape.end(), 0U) != 0;
        auto const count = empty ? 0 : std::accumulate(shape.begin(), shape.end(), 1L, std::multiplies<>());
        EXPECT_EQ(get_element_count_(array.get()), count);
        ASSERT_EQ(release_buffer_(array.get(), true, &m_block, &m_deleter), QUARNA_SUCCESS);
        auto const* elements = static_cast<double*>(m_block);
        EXPECT_EQ(std::count(elements, elements + count, 0.0), count);
        m_deleter(m_block);
        EXPECT_EQ(release_buffer_(array.get(), true, &m_block, &m_deleter), QUARNA_ERROR_SystemError)
            << "nothing is left";
        EXPECT_FALSE(hasBlock());
        for (bool const soleHolder : {false, true}) {
            auto* unshared = reinterpret_cast<quarna_array*>(this);
            EXPECT_TRUE(unshare_(array.get(), soleHolder, &unshared));
            EXPECT_EQ(unshared, nullptr) << "nothing to write to";
        }
        EXPECT_EQ(get_element_count_(array.get()), 0U);
    }
}

TEST_F(Library, RefusesWhatItCannotHold)
{
    constexpr int tooMany = QUARNA_ERROR_TooManyElements;
    constexpr int noMemory = QUARNA_ERROR_OutOfMemory;
    constexpr int noType = QUARNA_ERROR_SystemError;
    constexpr int quads = QUARNA_TYPE_COMPLEX_UINT64;
    std::tuple<std::int32_t, std::size_t, int> const rows[]{{QUARNA_TYPE_DOUBLE, 1UL << 61, tooMany},
                                                            {quads, 1UL << 60, tooMany},
                                                            {QUARNA_TYPE_DOUBLE, 1UL << 60, tooMany},
                                                            {QUARNA_TYPE_INT8, 1UL << 63, tooMany},
                                                            {QUARNA_TYPE_INT8, huge / 2, noMemory},
                                                            {QUARNA_TYPE_DOUBLE, 1UL << 59, noMemory},
                                                            {quads, (1UL << 59) - 1, noMemory},
                                                            {2, 1, noType},
                                                            {-1, 1, noType},
                                                            {quads + 1, 1, noType}};
    for (auto const& [type, count, code] : rows) {
        create(type, {1, count}, code);
        EXPECT_EQ(create_buffer_(m_factory, &m_block, &m_deleter, type, count), code);
        EXPECT_FALSE(hasBlock()) << type;
    }
    create(QUARNA_TYPE_DOUBLE, {1UL << 32, 1UL << 32}, QUARNA_ERROR_TooManyElements);
}

TEST_F(Library, RefusesShapesThatNoMemoryHolds)
{
#ifdef __SANITIZE_ADDRESS__
    GTEST_SKIP() << "the sanitizer's operator new never throws, but ends the process";
#endif
    for (std::size_t const dimensions : {1UL << 45, 1UL << 60, huge}) {
        quarna_array* array = nullptr;
        std::size_t const length = 1;
        EXPECT_EQ(create_array_(m_factory, QUARNA_TYPE_DOUBLE, &length, dimensions, &array),
                  QUARNA_ERROR_OutOfMemory)
            << dimensions;
    }
}

TEST_F(Library, AnAdoptedBlockIsFreedOnceWhateverTheOutcome)
{
    static int freed;
    constexpr auto columns = QUARNA_LAYOUT_COLUMN_MAJOR;
    std::tuple<std::int32_t, std::size_t, std::int32_t, int> const rows[]{
        {QUARNA_TYPE_DOUBLE, 2, columns, QUARNA_SUCCESS},
        {QUARNA_TYPE_DOUBLE, 2, QUARNA_LAYOUT_ROW_MAJOR, QUARNA_SUCCESS},
        {QUARNA_TYPE_DOUBLE, 2, 2, QUARNA_ERROR_MemoryLayoutMismatch},
        {2, 2, columns, QUARNA_ERROR_SystemError},
        {QUARNA_TYPE_DOUBLE, huge, columns, QUARNA_ERROR_TooManyElements},
        {QUARNA_TYPE_DOUBLE, 1UL << 60, columns, QUARNA_ERROR_TooManyElements}};
    auto const free = [](void* block) { ++*static_cast<int*>(block); };
    for (auto const& [type, length, layout, code] : rows) {
        freed = 0;
        quarna_array* array = nullptr;
        EXPECT_EQ(adopt_buffer_in_order_(m_factory, type, &length, 1, &freed, free, &array, layout), code);
        EXPECT_EQ(array == nullptr, code != QUARNA_SUCCESS);
        EXPECT_EQ(freed, code != QUARNA_SUCCESS);
        destroy_array_(array);
        EXPECT_EQ(freed, 1) << code;
    }
}

TEST_F(Library, ReferencesReachPartsAndRefuseOtherTypesAndThePlacePastTheLast)
{
    Array const array = create(QUARNA_TYPE_COMPLEX_SINGLE, {2});
    quarna_reference* reference = nullptr;
    EXPECT_EQ(get_reference_(array.get(), 2, &reference), QUARNA_ERROR_InvalidArrayIndex);
    ASSERT_EQ(get_reference_(array.get(), 1, &reference), QUARNA_SUCCESS);
    float const parts[] = {1.5F, -2.5F};
    EXPECT_EQ(set_complex_(reference, QUARNA_TYPE_COMPLEX_SINGLE, &parts[0], &parts[1]), QUARNA_SUCCESS);
    EXPECT_EQ(set_complex_(reference, QUARNA_TYPE_SINGLE, &parts[0], &parts[1]),
              QUARNA_ERROR_DataTypeMismatch);
    void* real = nullptr;
    void* imaginary = nullptr;
    EXPECT_EQ(get_part_addresses_(reference, &real, &imaginary), QUARNA_SUCCESS);
    EXPECT_EQ(*static_cast<std::complex<float>*>(real), std::complex<float>(1.5F, -2.5F));
    EXPECT_EQ(*static_cast<float*>(imaginary), -2.5F);
    destroy_reference_(reference);

    quarna_iterator* const end = end_(array.get(), true);
    EXPECT_EQ(get_address_(end, &real), QUARNA_ERROR_DataTypeMismatch) << "it is complex";
    EXPECT_EQ(dereference_(end, &reference), QUARNA_SUCCESS);
    EXPECT_EQ(set_complex_(reference, QUARNA_TYPE_COMPLEX_SINGLE, &parts[0], &parts[1]),
              QUARNA_ERROR_InvalidArrayIndex);
    destroy_reference_(reference);
    destroy_iterator_(end);
}

TEST_F(Library, BlocksOfNoElementsAreBlocksAndNewOnesAreFilledInDebugBuilds)
{
    for (std::size_t const count : {0U, 2U}) {
        ASSERT_EQ(create_buffer_(m_factory, &m_block, &m_deleter, QUARNA_TYPE_INT8, count), QUARNA_SUCCESS);
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
        EXPECT_EQ(function(Arguments()...), QUARNA_ERROR_SystemError) << name;
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
