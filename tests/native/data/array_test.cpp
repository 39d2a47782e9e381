// Handles on arrays: conversion, copy-on-write, release, and what the library's refusals turn into.
#include "data/array_factory.h"
#include "data/operation.h"
#include "support/elements.h"
#include "support/scripted_data_array.h"

#include <algorithm>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <string>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace quarna::data {
namespace {

template <class Work>
std::string messageOf(Work work)
{
    try {
        work();
    } catch (Exception const& exception) {
        EXPECT_STREQ(dynamic_cast<std::exception const&>(exception).what(), exception.what());
        return exception.what();
    }
    return "nothing thrown";
}

template <class T>
class TypedArrays : public testing::Test {};
TYPED_TEST_SUITE(TypedArrays, ElementTypes);

TYPED_TEST(TypedArrays, AreSharedUntilAWriteAndHandOverWhatTheyHoldAlone)
{
    auto array = filledArray<TypeParam>({2, 3});
    auto const before = elementsOf(array);
    EXPECT_EQ(before[4], elementValue<TypeParam>(4));
    auto const* own = array.handle();
    TypedArray<TypeParam> other = array;
    *(other.begin() + 5) = before[0];
    *(array.begin() + 0) = before[0];
    EXPECT_EQ(array.handle(), own) << "a sole holder writes in place";
    EXPECT_EQ(elementsOf(array), before);
    EXPECT_EQ(elementsOf(other)[5], before[0]);

    other = array;
    EXPECT_NE(other.release().get(), array.elements()) << "a copy";
    other = filledArray<TypeParam>({0});
    EXPECT_TRUE(elementsOf(other).empty());
    auto const* storage = array.elements();
    auto const released = array.release();
    EXPECT_EQ(released.get(), storage);
    EXPECT_TRUE(std::equal(before.begin(), before.end(), released.get()));
}

TYPED_TEST(TypedArrays, AreMadeOfScalarsAndOfArraysOfTheirType)
{
    auto const value = elementValue<TypeParam>(7);
    ArrayFactory factory;
    TypedArray<TypeParam> array = factory.createArray<TypeParam>({1, 1});
    if constexpr (Complex<TypeParam>) {
        TypedArray<TypeParam> const before = array;
        detail::setElement(array[0].get(), value, static_cast<int>(arrayTypeOf<TypeParam>));
        EXPECT_EQ(elementsOf(before), std::vector{TypeParam()});
        EXPECT_EQ(messageOf([&] { array[1]; }), "Array index is invalid.");
    } else {
        array = factory.createScalar<TypeParam>(value);
    }
    EXPECT_EQ(elementsOf(array), std::vector<TypeParam>{value});

    using Wrong = std::conditional_t<std::is_same_v<TypeParam, float>, double, float>;
    Array source = array;
    char const text[] = "Can't convert the Array to this TypedArray";
    EXPECT_EQ(messageOf([&] { TypedArray<Wrong> wrong(source); }), text);
    EXPECT_EQ(messageOf([&] { TypedArray<Wrong> wrong(std::move(source)); }), text);
    EXPECT_EQ(elementsOf(TypedArray<TypeParam>(source))[0], value);
}

TEST(ErrorCodes, BecomeTheirExceptions)
{
    EXPECT_THROW(detail::throwIfError(QUARNA_ERROR_OutOfMemory, {}),
                 detail::DataException<ExceptionType::OutOfMemory>);
    std::pair<std::vector<int>, char const*> const rows[]{
        {{QUARNA_SUCCESS}, "nothing thrown"},
        {{QUARNA_ERROR_InputLayoutMismatch}, "Memory layout mismatch."},
        {{QUARNA_ERROR_TooManyElements}, "Number of elements exceeds max."},
        {{QUARNA_ERROR_LibraryText, QUARNA_ERROR_LibraryDetail}, "the text"},
        {{QUARNA_ERROR_SystemError, QUARNA_ERROR_FeatureNotSupported, 4, 11, 12, 15, 17, -1, 30, 1 << 30},
         "System Error."}};
    for (auto const& [codes, message] : rows) {
        for (int const code : codes) {
            EXPECT_EQ(messageOf([&, code = code] { detail::throwIfError(code, "the text"); }), message);
        }
    }
}

// Of operations that Python has no need of, or only with an older library.
TEST(Refusals, OfTheLibraryAreThrownAndLeakNothing)
{
    auto complex = filledArray<std::complex<float>>({2});
    Array const holder = complex;
    ArrayFactory factory;
    // The newer operation, and the one that takes its place in an older library.
    std::tuple<quarna_operation, quarna_operation, std::function<void()>> const rows[]{
        {QUARNA_OPERATION_create_scalar, {}, [&] { factory.createScalar(2.0); }},
        {QUARNA_OPERATION_create_array, {}, [&] { factory.createArray<double>({2}); }},
        {QUARNA_OPERATION_types_are_compatible, {}, [&] { TypedArray<std::complex<float>>{holder}; }},
        {QUARNA_OPERATION_get_reference, {}, [&] { complex[0]; }},
        {QUARNA_OPERATION_begin_fast, QUARNA_OPERATION_begin, [&] { complex.elements(); }},
        {QUARNA_OPERATION_get_complex_address, QUARNA_OPERATION_dereference, [&] { complex.elements(); }},
        {QUARNA_OPERATION_get_complex_address, QUARNA_OPERATION_get_part_addresses,
         [&] { complex.elements(); }}};
    for (auto const& [newer, older, work] : rows) {
        scripted_fail(newer, QUARNA_ERROR_OutOfMemory, 0);
        scripted_fail(older, QUARNA_ERROR_OutOfMemory, 0);
        EXPECT_EQ(messageOf(work), "Not enough memory available to support the request.") << newer;
        scripted_reset();
        EXPECT_EQ(elementsOf(complex), elementsOf(filledArray<std::complex<float>>({2})));
    }
}

TEST(Refusals, OfAHandleThatWasMovedFromAreNotForWantOfMemory)
{
    auto array = filledArray<std::complex<float>>({2});
    auto const other = std::move(array);
    // NOLINTBEGIN(bugprone-use-after-move): it is what is tested.
    for (auto const& work : {std::function<void()>([&] { array.writableElements(); }),
                             {[&] { std::as_const(array).elements(); }},
                             {[&] { array[0]; }}}) {
        EXPECT_EQ(messageOf(work), "System Error.");
    }
    // NOLINTEND(bugprone-use-after-move)
}

TEST(Optional, RowMajorBuffersNeedTheNewerOperation)
{
    ArrayFactory factory;
#ifdef QUARNA_DEBUG_FILL
    EXPECT_EQ(factory.createBuffer<std::uint8_t>(2)[1], 0xA5) << "new blocks are filled";
#endif
    auto const build = [&] {
        factory.createArrayFromBuffer<double>({2}, filledBuffer<double>(factory, 2), MemoryLayout::ROW_MAJOR);
    };
    EXPECT_EQ(messageOf(build), get_function_ptr(QUARNA_OPERATION_adopt_buffer_in_order) != nullptr
                                    ? "nothing thrown"
                                    : "Row-major buffers require QR3s");
}

TEST(Missing, OperationsNameTheirRelease)
{
    std::pair<int, std::string> const rows[]{{0, "QR1"},   {108, "QR1"}, {109, "QR2"},   {117, "QR3"},
                                             {118, "QR4"}, {122, "QR4"}, {123, "FUTURE"}};
    for (auto const& [number, release] : rows) {
        EXPECT_EQ(messageOf([id = number] { detail::resolveFunction<void (*)()>(detail::FunctionType{id}); }),
                  "This feature requires " + release);
    }
}

// Only in processes of their own, whose library has no way to adopt a block, or to destroy something.
TEST(Missing, ARequiredOperationMeansThatNothingIsMade)
{
    auto const required = {QUARNA_OPERATION_adopt_buffer, QUARNA_OPERATION_destroy_factory,
                           QUARNA_OPERATION_destroy_reference, QUARNA_OPERATION_destroy_array,
                           QUARNA_OPERATION_destroy_iterator};
    if (std::all_of(required.begin(), required.end(), &get_function_ptr)) {
        GTEST_SKIP();
    }
    auto const useAll = [] {
        auto array = filledArray<std::complex<float>>({2});
        array[0];
        array.writableElements();
    };
    EXPECT_EQ(messageOf(useAll), "This feature requires QR1");
}

}  // namespace
}  // namespace quarna::data
