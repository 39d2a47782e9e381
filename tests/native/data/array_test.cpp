// Handles on arrays: conversion, copy-on-write, release, and what the library's refusals turn into.
#include "data/array_factory.h"
#include "data/operation.h"
#include "support/elements.h"
#include "support/scripted_data_array.h"

#include <algorithm>
#include <complex>
#include <cstddef>
#include <exception>
#include <functional>
#include <string>
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
    EXPECT_EQ(array.getType(), arrayTypeOf<TypeParam>);
    EXPECT_EQ(array.getDimensions(), (std::vector<std::size_t>{2, 3}));
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
    auto const* storage = array.elements();
    auto const released = array.release();
    EXPECT_EQ(released.get(), storage);
    EXPECT_TRUE(std::equal(before.begin(), before.end(), released.get()));
}

TYPED_TEST(TypedArrays, AWrongConversionLeavesItsSourceUsable)
{
    using Wrong = std::conditional_t<std::is_same_v<TypeParam, float>, double, float>;
    Array source = filledArray<TypeParam>({2});
    char const text[] = "Can't convert the Array to this TypedArray";
    EXPECT_EQ(messageOf([&] { TypedArray<Wrong> wrong(source); }), text);
    EXPECT_EQ(messageOf([&] { TypedArray<Wrong> wrong(std::move(source)); }), text);
    EXPECT_EQ(elementsOf(TypedArray<TypeParam>(source))[1], elementValue<TypeParam>(1));
}

TYPED_TEST(TypedArrays, ScalarsAndEmptyArrays)
{
    ArrayFactory factory;
    EXPECT_TRUE(elementsOf(filledArray<TypeParam>({0, 3})).empty());
    if constexpr (Complex<TypeParam>) {
        auto array = factory.createArray<TypeParam>({1, 1});
        TypedArray<TypeParam> const before = array;
        detail::setElement(array[0].get(), elementValue<TypeParam>(7),
                           static_cast<int>(arrayTypeOf<TypeParam>));
        EXPECT_EQ(elementsOf(array), std::vector{elementValue<TypeParam>(7)});
        EXPECT_EQ(elementsOf(before), std::vector{TypeParam()});
        EXPECT_EQ(messageOf([&] { array[1]; }), "Array index is invalid.");
    } else {
        auto const array = factory.createScalar<TypeParam>(elementValue<TypeParam>(7));
        EXPECT_EQ(array.getDimensions(), (std::vector<std::size_t>{1, 1}));
        EXPECT_EQ(elementsOf(array), std::vector<TypeParam>{elementValue<TypeParam>(7)});
    }
}

template <ExceptionType type>
void expectException(char const* message, int code = static_cast<int>(type))
{
    EXPECT_THROW(detail::throwIfError(code, "the text"), detail::DataException<type>) << code;
    EXPECT_EQ(messageOf([&] { detail::throwIfError(code, "the text"); }), message);
}

TEST(ErrorCodes, BecomeTheirExceptions)
{
    detail::throwIfError(QUARNA_SUCCESS, "the text");
    expectException<ExceptionType::InvalidArrayIndex>("Array index is invalid.");
    expectException<ExceptionType::DataTypeMismatch>("Data type mismatch.");
    expectException<ExceptionType::OutOfMemory>("Not enough memory available to support the request.");
    expectException<ExceptionType::InputLayoutMismatch>("Memory layout mismatch.");
    expectException<ExceptionType::TooManyElements>("Number of elements exceeds max.");
    expectException<ExceptionType::LibraryText>("the text");
    expectException<ExceptionType::LibraryDetail>("the text");
    expectException<ExceptionType::SystemError>("System Error.");
    for (int const code : {int{QUARNA_ERROR_FeatureNotSupported}, 4, 11, 12, 15, 17, -1, 30, 1 << 30}) {
        expectException<ExceptionType::SystemError>("System Error.", code);
    }
}

// Of operations that Python has no need of, or only with an older library.
TEST(Refusals, OfTheLibraryAreThrownAndLeakNothing)
{
    auto complex = filledArray<std::complex<float>>({2});
    Array const holder = complex;
    ArrayFactory factory;
    auto const newest = [](quarna_operation newer, quarna_operation older) {
        return get_function_ptr(newer) != nullptr ? newer : older;
    };
    std::pair<quarna_operation, std::function<void()>> const rows[]{
        {QUARNA_OPERATION_create_scalar, [&] { factory.createScalar(2.0); }},
        {QUARNA_OPERATION_create_array, [&] { factory.createArray<double>({2}); }},
        {QUARNA_OPERATION_types_are_compatible, [&] { TypedArray<std::complex<float>>{holder}; }},
        {QUARNA_OPERATION_get_reference, [&] { complex[0]; }},
        {newest(QUARNA_OPERATION_begin_fast, QUARNA_OPERATION_begin), [&] { complex.elements(); }},
        {newest(QUARNA_OPERATION_get_complex_address, QUARNA_OPERATION_dereference),
         [&] { complex.elements(); }},
        {newest(QUARNA_OPERATION_get_complex_address, QUARNA_OPERATION_get_part_addresses),
         [&] { complex.elements(); }},
    };
    for (auto const& [operation, work] : rows) {
        scripted_fail(operation, QUARNA_ERROR_OutOfMemory, 0);
        EXPECT_EQ(messageOf(work), "Not enough memory available to support the request.") << operation;
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
                             {[&] { array[0]; }},
                             {[&] { array.release(); }},
                             {[&] { array.getType(); }}}) {
        EXPECT_EQ(messageOf(work), "System Error.");
    }
    // NOLINTEND(bugprone-use-after-move)
}

TEST(Optional, RowMajorBuffersNeedTheNewerOperation)
{
    ArrayFactory factory;
    auto const build = [&] {
        factory.createArrayFromBuffer<double>({2}, filledBuffer<double>(factory, 2), MemoryLayout::ROW_MAJOR);
    };
    EXPECT_EQ(messageOf(build), get_function_ptr(QUARNA_OPERATION_adopt_buffer_in_order) != nullptr
                                    ? "nothing thrown"
                                    : "Row-major buffers require QR3s");
}

TEST(Missing, OperationsNameTheirRelease)
{
    std::pair<int, char const*> const rows[]{{0, "QR1"},      {108, "QR1"},       {109, "QR2"},
                                             {117, "QR3"},    {118, "QR4"},       {122, "QR4"},
                                             {123, "FUTURE"}, {1 << 30, "FUTURE"}};
    for (auto const& [number, release] : rows) {
        EXPECT_EQ(messageOf([id = number] { detail::resolveFunction<void (*)()>(detail::FunctionType{id}); }),
                  std::string("This feature requires ") + release);
    }
}

// Only in a process of its own, whose library was told to leave out adopt_buffer and adopt_buffer_in_order.
TEST(Missing, ARequiredOperationLeaksNothing)
{
    if (get_function_ptr(QUARNA_OPERATION_adopt_buffer) != nullptr) {
        GTEST_SKIP();
    }
    EXPECT_EQ(messageOf([] { filledArray<double>({2}); }), "This feature requires QR1");
}

// Only in a process of its own, whose library cannot destroy something.
TEST(Missing, ADestroyerMeansThatNothingIsMade)
{
    auto const has = [](quarna_operation operation) { return get_function_ptr(operation) != nullptr; };
    if (has(QUARNA_OPERATION_destroy_factory) && has(QUARNA_OPERATION_destroy_reference) &&
        has(QUARNA_OPERATION_destroy_array) && has(QUARNA_OPERATION_destroy_iterator)) {
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
