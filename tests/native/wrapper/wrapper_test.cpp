// The wrapper: strides and offsets against plain counting, where elements lie and who sees them, parts.
#include "wrapper/qd_array_wrapper.h"

#include "data/hand_over.h"
#include "support/elements.h"
#include "support/scripted_data_array.h"

#include <cstddef>
#include <exception>
#include <functional>
#include <optional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace quarna {
namespace {

using Shape = std::vector<long>;
using Indices = std::vector<long>;
using data::ArrayFactory;

Shape const shapes[]{{},     {1},       {5},          {1, 1},       {2, 3},
                     {3, 1}, {2, 3, 4}, {4, 1, 3, 2}, {17, 3, 33},  {40, 20},
                     {0, 3}, {3, 0, 2}, {1, 64},      {2, 2, 2, 2}, {33, 1, 1, 1, 17}};

long countOf(Shape const& shape)
{
    long count = 1;
    for (long const length : shape) {
        count *= length;
    }
    return count;
}

/// The position that comes n-th if the first index runs fastest, or the last ('C').
Indices nthPosition(Shape const& shape, long n, char order)
{
    Indices indices(shape.size());
    for (std::size_t step = 0; step < shape.size(); ++step) {
        std::size_t const dimension = order == 'F' ? step : shape.size() - 1 - step;
        indices[dimension] = n % shape[dimension];
        n /= shape[dimension];
    }
    return indices;
}

template <class T>
LooseArray arrayOf(Shape const& shape)
{
    return {filledArray<T>({shape.begin(), shape.end()}), data::arrayTypeOf<T>, shape};
}

template <class T>
std::vector<T> elementsAt(void const* block, long count)
{
    auto const* first = static_cast<T const*>(block);
    return std::vector<T>(first, first + count);
}

/// What Python reads.
template <class T>
std::vector<T> readBy(QDArrayWrapper const& wrapper)
{
    EXPECT_EQ(wrapper.getBufferSizeInBytes(), wrapper.getNumberOfElements() * long{sizeof(T)});
    return elementsAt<T>(wrapper.buf(), wrapper.getNumberOfElements());
}

/// What a native consumer sees.
template <class T>
std::vector<T> seenOf(QDArrayWrapper const& wrapper)
{
    return ::elementsOf(data::TypedArray<T>(wrapper.array()));
}

template <class T>
class Wrapper : public testing::Test {};
TYPED_TEST_SUITE(Wrapper, ElementTypes);

TYPED_TEST(Wrapper, OffsetsCountThePositionsInStorageOrder)
{
    for (Shape const& shape : shapes) {
        for (char const order : {'F', 'C'}) {
            QDArrayWrapper const wrapper(arrayOf<TypeParam>(shape), order);
            ASSERT_EQ(Shape(wrapper.shape().begin(), wrapper.shape().end()), shape);
            ASSERT_EQ(wrapper.getNumberOfElements(), countOf(shape));
            for (long n = 0; n < countOf(shape); ++n) {
                Indices const position = nthPosition(shape, n, order);
                ASSERT_EQ(wrapper.getElementOffsetFromIndices(position), n);
                auto const* address = static_cast<char const*>(wrapper.buf());
                for (std::size_t k = 0; k < shape.size(); ++k) {
                    address += position[k] * wrapper.bytewiseStrides()[k];
                }
                ASSERT_EQ(*reinterpret_cast<TypeParam const*>(address),
                          elementValue<TypeParam>(std::size_t(n)));
            }
        }
    }
}

TYPED_TEST(Wrapper, NestedOrderBecomesStorageOrder)
{
    ArrayFactory factory;
    for (Shape const& shape : shapes) {
        auto const count = static_cast<std::size_t>(countOf(shape));
        auto array = data::makeTypedArrayFromBuf<TypeParam>(filledBuffer<TypeParam>(factory, count), false,
                                                            factory, shape);
        QDArrayWrapper const wrapper({std::move(array), data::arrayTypeOf<TypeParam>, shape});
        auto const elements = readBy<TypeParam>(wrapper);
        for (std::size_t n = 0; n < count; ++n) {
            Indices const position = nthPosition(shape, static_cast<long>(n), 'C');
            long const offset = wrapper.getElementOffsetFromIndices(position);
            ASSERT_EQ(elements[static_cast<std::size_t>(offset)], elementValue<TypeParam>(n));
        }
    }
    auto const stored = data::makeTypedArrayFromBuf<TypeParam>(filledBuffer<TypeParam>(factory, 6), true,
                                                               factory, Shape{2, 3});
    EXPECT_EQ(::elementsOf(stored), ::elementsOf(filledArray<TypeParam>({2, 3})));
}

TYPED_TEST(Wrapper, AWriteReachesBothPlacesAndNoSnapshot)
{
    for (bool const isSeen : {false, true}) {
        QDArrayWrapper wrapper(arrayOf<TypeParam>({2, 3}));
        auto const* handle = isSeen ? wrapper.seenHandle() : nullptr;
        LooseArray const snapshot = wrapper.snapshot();
        auto expected = readBy<TypeParam>(wrapper);
        auto const original = expected;
        expected[3] = expected[2];
        expected[1] = expected[4];
        EXPECT_TRUE(wrapper.setElementFromIndices<TypeParam>(Indices{1, 1}, expected[3]));
        EXPECT_TRUE(wrapper.setElementFromIndices<TypeParam>(Indices{1}, expected[1]));
        EXPECT_EQ(readBy<TypeParam>(wrapper), expected);
        EXPECT_EQ(seenOf<TypeParam>(wrapper), expected);
        EXPECT_EQ(::elementsOf(data::TypedArray<TypeParam>(snapshot.array)), original);
        EXPECT_TRUE(!isSeen || wrapper.seenHandle() == handle) << "nobody else holds it";
        for (Indices const& outside : {Indices{0, 0, 0}, Indices{0, 3}, Indices{-1, 0}}) {
            EXPECT_FALSE(wrapper.setElementFromIndices<TypeParam>(outside, expected[0]));
        }
        data::Array const other = wrapper.array();
        scripted_fail(QUARNA_OPERATION_unshare, QUARNA_ERROR_OutOfMemory, 0);
        EXPECT_ANY_THROW(wrapper.setElementFromIndices<TypeParam>(Indices{0, 0}, expected[5]));
        scripted_reset();
        EXPECT_EQ(readBy<TypeParam>(wrapper), expected);
        EXPECT_EQ(seenOf<TypeParam>(wrapper), expected);
    }
}

TYPED_TEST(Wrapper, WhatANativeConsumerWritesIsReadAfterAReshape)
{
    for (bool const isPinned : {false, true}) {
        auto const array = filledArray<TypeParam>({2, 3});
        auto const wrapper = QDArrayWrapper::ofSeenArray(array);
        EXPECT_EQ(wrapper->seenHandle(), array.handle());
        auto const before = readBy<TypeParam>(*wrapper);
        void const* const block = isPinned ? wrapper->pinnedBuf() : wrapper->buf();
        *const_cast<TypeParam*>(array.elements()) = before[5];
        EXPECT_EQ(readBy<TypeParam>(*wrapper), before);
        wrapper->reshape(Shape{3, 2}, 'F');
        EXPECT_EQ(readBy<TypeParam>(*wrapper)[0], before[5]);
        EXPECT_EQ(wrapper->buf() == block, isPinned) << "an address that was given out stays";
        wrapper->seenHandle();
        EXPECT_EQ(wrapper->array().getDimensions(), (std::vector<std::size_t>{3, 2}));
        EXPECT_EQ(seenOf<TypeParam>(*wrapper), readBy<TypeParam>(*wrapper));
    }
}

TYPED_TEST(Wrapper, PartsAreNewRowsInStorageOrder)
{
    using Part = RealPartOf<TypeParam>;
    for (Shape const& shape : {Shape{2, 3}, Shape{0, 4}}) {
        QDArrayWrapper const wrapper(arrayOf<TypeParam>(shape));
        auto const check = [&](LooseArray const& part, auto partOf) {
            std::vector<Part> expected;
            for (TypeParam const element : readBy<TypeParam>(wrapper)) {
                expected.push_back(partOf(element));
            }
            EXPECT_EQ(part.shape, (Shape{1, static_cast<long>(expected.size())}));
            EXPECT_EQ(part.array.getDimensions(), (std::vector<std::size_t>{1, expected.size()}));
            EXPECT_EQ(::elementsOf(data::TypedArray<Part>(part.array)), expected);
        };
        if constexpr (Complex<TypeParam>) {
            check(wrapper.real(), [](TypeParam element) { return element.real(); });
            check(wrapper.imag(), [](TypeParam element) { return element.imag(); });
            EXPECT_THROW(wrapper.noncomplex(), std::runtime_error);
        } else {
            check(wrapper.noncomplex(), std::identity());
            EXPECT_THROW(wrapper.imag(), std::runtime_error);
        }
    }
}

TEST(WrapperReshape, MovesNoElementWhoeverSharesThem)
{
    for (bool const isShared : {false, true}) {
        QDArrayWrapper wrapper(arrayOf<double>({2, 3}));
        LooseArray const other = isShared ? wrapper.snapshot() : arrayOf<double>({1});
        void const* const block = wrapper.buf();
        long const calls = scripted_live_objects();
        wrapper.reshape(Shape{3, 1, 2}, 'F');
        EXPECT_EQ(scripted_live_objects(), calls);
        EXPECT_EQ(wrapper.buf(), block);
        EXPECT_EQ(Shape(wrapper.bytewiseStrides().begin(), wrapper.bytewiseStrides().end()),
                  (Shape{8, 24, 24}));
        EXPECT_EQ(wrapper.reshapeCount(), 1U);
        wrapper.seenHandle();
        EXPECT_EQ(wrapper.array().getDimensions(), (std::vector<std::size_t>{3, 1, 2}));
        EXPECT_EQ(seenOf<double>(wrapper), readBy<double>(wrapper));
    }
}

TEST(WrapperFailures, LeaveTheArrayWhole)
{
    for (bool const isSharing : {false, true}) {
        QDArrayWrapper wrapper(arrayOf<double>({2, 3}));
        auto const snapshot = isSharing ? std::optional(wrapper.snapshot()) : std::nullopt;
        auto const elements = readBy<double>(wrapper);
        for (int operation = 0; operation < 120; ++operation) {
            for (int after = 0; after < 3; ++after) {
                scripted_fail(quarna_operation(operation), QUARNA_ERROR_OutOfMemory, after);
                try {
                    wrapper.pinnedBuf();
                    wrapper.seenHandle();
                } catch (std::exception const& failure) {
                    EXPECT_STREQ(failure.what(), "Not enough memory available to support the request.");
                }
                scripted_reset();
                EXPECT_EQ(readBy<double>(wrapper), elements) << operation;
            }
        }
        EXPECT_EQ(seenOf<double>(wrapper), elements);
    }
}

TEST(WrapperIndices, BeyondEverySizeAreRefused)
{
    constexpr long huge = 1L << 62;
    auto const empty = QDArrayWrapper::ofSeenArray(ArrayFactory().createArray<double>({huge, huge, 0}));
    EXPECT_EQ(Shape(empty->bytewiseStrides().begin(), empty->bytewiseStrides().end()), (Shape{8, 0, 0}));
    QDArrayWrapper wrapper(arrayOf<double>({2, 3}));
    auto const elements = readBy<double>(wrapper);
    for (Indices const& indices : {Indices{huge}, {0, huge}, {1L << 61, 1L << 60}, {1, -huge}, {0, 0, 0}}) {
        EXPECT_EQ(wrapper.getElementOffsetFromIndices(indices), -1);
        EXPECT_FALSE(wrapper.setElementFromIndices(indices, 5.0));
    }
    EXPECT_EQ(readBy<double>(wrapper), elements);
    EXPECT_EQ(wrapper.getElementOffsetFromIndices(Indices{1}), 1);
}

}  // namespace
}  // namespace quarna
