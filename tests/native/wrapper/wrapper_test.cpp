// The wrapper: strides and offsets against plain counting, both places of each element, reshape, parts.
#include "wrapper/qd_array_wrapper.h"

#include "support/elements.h"
#include "support/scripted_data_array.h"
#include "wrapper/storage_order.h"

#include <cstddef>
#include <exception>
#include <functional>
#include <stdexcept>
#include <utility>
#include <vector>

namespace quarna {
namespace {

using Shape = std::vector<long>;
using Indices = std::vector<long>;
using data::ArrayFactory;
using data::MemoryLayout;

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
data::TypedArray<T> arrayOf(Shape const& shape)
{
    return filledArray<T>({shape.begin(), shape.end()});
}

/// Mirror and data array agree; returns the elements.
template <class T>
std::vector<T> elementsOf(QDArrayWrapper const& wrapper)
{
    auto const* first = static_cast<T const*>(wrapper.buf());
    std::vector<T> const mirror(first, first + wrapper.getNumberOfElements());
    EXPECT_EQ(::elementsOf(data::TypedArray<T>(wrapper.array())), mirror);
    EXPECT_EQ(wrapper.getBufferSizeInBytes(), static_cast<long>(mirror.size() * sizeof(T)));
    return mirror;
}

template <class T>
class Wrapper : public testing::Test {};
TYPED_TEST_SUITE(Wrapper, ElementTypes);

TYPED_TEST(Wrapper, OffsetsCountThePositionsInStorageOrder)
{
    for (Shape const& shape : shapes) {
        for (char const order : {'F', 'C'}) {
            QDArrayWrapper const wrapper(arrayOf<TypeParam>(shape), order);
            ASSERT_EQ(wrapper.shape(), shape);
            ASSERT_EQ(wrapper.getNumberOfElements(), countOf(shape));
            auto const elements = elementsOf<TypeParam>(wrapper);
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
        auto const array =
            makeTypedArrayFromBuf<TypeParam>(filledBuffer<TypeParam>(factory, count), false, factory, shape);
        QDArrayWrapper const wrapper(array, 'F');
        auto const elements = elementsOf<TypeParam>(wrapper);
        for (std::size_t n = 0; n < count; ++n) {
            Indices const position = nthPosition(shape, static_cast<long>(n), 'C');
            long const offset = wrapper.getElementOffsetFromIndices(position);
            ASSERT_EQ(elements[static_cast<std::size_t>(offset)], elementValue<TypeParam>(n));
        }
    }
    auto const stored =
        makeTypedArrayFromBuf<TypeParam>(filledBuffer<TypeParam>(factory, 6), true, factory, Shape{2, 3});
    EXPECT_EQ(::elementsOf(stored), ::elementsOf(arrayOf<TypeParam>({2, 3})));
}

TYPED_TEST(Wrapper, AWriteReachesBothPlacesAndNoOtherHolder)
{
    QDArrayWrapper wrapper(arrayOf<TypeParam>({2, 3}), 'F');
    void const* mirror = wrapper.buf();
    QDArrayWrapper const clone(wrapper.array(), 'F');
    auto expected = elementsOf<TypeParam>(wrapper);
    auto const original = expected;
    expected[3] = expected[2];
    expected[1] = expected[4];
    EXPECT_TRUE(wrapper.setElementFromIndices<TypeParam>(Indices{1, 1}, expected[3]));
    EXPECT_TRUE(wrapper.setElementFromIndices<TypeParam>(Indices{1}, expected[1]));
    EXPECT_EQ(elementsOf<TypeParam>(wrapper), expected);
    EXPECT_EQ(elementsOf<TypeParam>(clone), original);
    EXPECT_EQ(wrapper.buf(), mirror);
    for (Indices const& outside : {Indices{0, 0, 0}, Indices{0, 3}, Indices{-1, 0}}) {
        EXPECT_FALSE(wrapper.setElementFromIndices<TypeParam>(outside, expected[0]));
    }
    scripted_fail(QUARNA_OPERATION_unshare, QUARNA_ERROR_OutOfMemory, 0);
    EXPECT_ANY_THROW(wrapper.setElementFromIndices<TypeParam>(Indices{0, 0}, expected[5]));
    EXPECT_EQ(elementsOf<TypeParam>(wrapper), expected);
}

TYPED_TEST(Wrapper, PartsAreNewRowsInStorageOrder)
{
    using Part = RealPartOf<TypeParam>;
    ArrayFactory factory;
    for (Shape const& shape : {Shape{2, 3}, Shape{0, 4}}) {
        QDArrayWrapper const wrapper(arrayOf<TypeParam>(shape), 'F');
        auto const check = [&](data::Array const& part, auto partOf) {
            std::vector<Part> expected;
            for (TypeParam const element : elementsOf<TypeParam>(wrapper)) {
                expected.push_back(partOf(element));
            }
            EXPECT_EQ(part.getDimensions(), (std::vector<std::size_t>{1, expected.size()}));
            EXPECT_EQ(::elementsOf(data::TypedArray<Part>(part)), expected);
        };
        if constexpr (Complex<TypeParam>) {
            check(wrapper.real(factory), [](TypeParam element) { return element.real(); });
            check(wrapper.imag(factory), [](TypeParam element) { return element.imag(); });
            EXPECT_THROW(wrapper.noncomplex(factory), std::runtime_error);
        } else {
            check(wrapper.noncomplex(factory), std::identity());
            EXPECT_THROW(wrapper.imag(factory), std::runtime_error);
        }
    }
}

TYPED_TEST(Wrapper, ReshapeKeepsTheSequenceAndOtherHolders)
{
    ArrayFactory factory;
    QDArrayWrapper wrapper(arrayOf<TypeParam>({2, 3}), 'F');
    auto const elements = elementsOf<TypeParam>(wrapper);
    for (bool const shared : {false, true}) {
        data::Array const other = shared ? wrapper.array() : data::Array();
        Shape const shape = shared ? Shape{1, 2, 3} : Shape{3, 2};
        wrapper.reshape(shape, factory, 'F', MemoryLayout::COLUMN_MAJOR);
        EXPECT_EQ(wrapper.shape(), shape);
        EXPECT_EQ(wrapper.array().getDimensions(), std::vector<std::size_t>(shape.begin(), shape.end()));
        EXPECT_EQ(wrapper.bytewiseStrides()[1], shape[0] * static_cast<long>(sizeof(TypeParam)));
        EXPECT_EQ(elementsOf<TypeParam>(wrapper), elements);
        EXPECT_EQ(other.getDimensions()[0], shared ? 3U : 0U);
    }
    EXPECT_EQ(wrapper.reshapeCount(), 2U);
}

TEST(WrapperFailures, LeaveAReshapedArrayWhole)
{
    ArrayFactory factory;
    Shape shape{2, 3};
    QDArrayWrapper wrapper(arrayOf<double>(shape), 'F');
    auto const elements = elementsOf<double>(wrapper);
    for (quarna_operation const operation :
         {QUARNA_OPERATION_release_buffer, QUARNA_OPERATION_adopt_buffer,
          QUARNA_OPERATION_adopt_buffer_in_order, QUARNA_OPERATION_get_type,
          QUARNA_OPERATION_types_are_compatible, QUARNA_OPERATION_get_address, QUARNA_OPERATION_begin,
          QUARNA_OPERATION_begin_fast}) {
        for (int after = 0; after < 3; ++after) {
            scripted_fail(operation, QUARNA_ERROR_OutOfMemory, after);
            Shape const wanted{shape[1], shape[0]};
            try {
                wrapper.reshape(wanted, factory, 'F', MemoryLayout::COLUMN_MAJOR);
                shape = wanted;
            } catch (std::exception const& failure) {
                EXPECT_STREQ(failure.what(), "Not enough memory available to support the request.");
            }
            scripted_reset();
            EXPECT_EQ(wrapper.shape(), shape) << operation;
            EXPECT_EQ(wrapper.bytewiseStrides()[1], shape[0] * 8);
            EXPECT_EQ(wrapper.array().getDimensions()[0], static_cast<std::size_t>(shape[0]));
            EXPECT_EQ(elementsOf<double>(wrapper), elements);
        }
    }
}

TEST(WrapperIndices, BeyondEverySizeAreRefused)
{
    constexpr long huge = 1L << 62;
    QDArrayWrapper const empty(ArrayFactory().createArray<double>({huge, huge, 0}), 'F');
    EXPECT_EQ(Shape(empty.bytewiseStrides(), empty.bytewiseStrides() + 3), (Shape{8, 0, 0}));
    QDArrayWrapper wrapper(arrayOf<double>({2, 3}), 'F');
    auto const elements = elementsOf<double>(wrapper);
    for (Indices const& indices : {Indices{huge}, {0, huge}, {1L << 61, 1L << 60}, {1, -huge}}) {
        EXPECT_EQ(wrapper.getElementOffsetFromIndices(indices), -1);
        EXPECT_FALSE(wrapper.setElementFromIndices(indices, 5.0));
    }
    EXPECT_EQ(elementsOf<double>(wrapper), elements);
}

TEST(WrapperIndices, AreNormalisedAsTheirCallersExpect)
{
    QDArrayWrapper const wrapper(arrayOf<double>({3, 4}), 'F');
    for (auto const& [index, expected] : {std::pair(0L, 0L), {3, 3}, {4, -999}, {-1, 3}, {-5, -1}}) {
        EXPECT_EQ(wrapper.normalizedIndex(index, 1), expected) << index;
    }
    EXPECT_EQ(wrapper.getElementOffsetFromIndices(Indices{0, 0, 0}), -1);
    EXPECT_EQ(wrapper.getElementOffsetFromIndices(Indices{2}), 2);
}

}  // namespace
}  // namespace quarna
