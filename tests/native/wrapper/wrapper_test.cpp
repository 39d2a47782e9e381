// The wrapper, where Python does not lead: either order, other holders, positions of any size.
#include "wrapper/qd_array_wrapper.h"

#include "elements/arithmetic.h"
#include "support/elements.h"

#include <cstddef>
#include <vector>

namespace quarna {
namespace {

using Shape = std::vector<long>;
using Indices = std::vector<long>;

Shape const shapes[]{{},     {1},       {5},          {1, 1},       {2, 3},
                     {3, 1}, {2, 3, 4}, {4, 1, 3, 2}, {17, 3, 33},  {40, 20},
                     {0, 3}, {3, 0, 2}, {1, 64},      {2, 2, 2, 2}, {33, 1, 1, 1, 17}};

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
class Wrapper : public testing::Test {};
TYPED_TEST_SUITE(Wrapper, ElementTypes);

TYPED_TEST(Wrapper, OffsetsCountThePositionsInStorageOrder)
{
    for (Shape const& shape : shapes) {
        for (char const order : {'F', 'C'}) {
            QDArrayWrapper const wrapper(arrayOf<TypeParam>(shape), order);
            for (long n = 0; n < wrapper.getNumberOfElements(); ++n) {
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

// Python never shares the array that native code sees; native code may.
TEST(WrapperWrites, LeaveOtherHoldersAlone)
{
    QDArrayWrapper wrapper(arrayOf<double>({2, 3}));
    wrapper.seenHandle();
    data::TypedArray<double> const other(wrapper.array());
    auto const before = elementsOf(other);
    EXPECT_TRUE(wrapper.setElementFromIndices(Indices{1, 1}, 7.0));
    EXPECT_EQ(elementsOf(other), before);
    EXPECT_EQ(elementsOf(data::TypedArray<double>(wrapper.array()))[3], 7.0);
    EXPECT_EQ(static_cast<double const*>(wrapper.buf())[3], 7.0);
}

TEST(WrapperIndices, BeyondEverySizeAreRefused)
{
    constexpr long huge = 1L << 62;
    auto const empty = QDArrayWrapper::ofSeenArray(data::ArrayFactory().createArray<double>({huge, huge, 0}));
    EXPECT_EQ(Shape(empty->bytewiseStrides().begin(), empty->bytewiseStrides().end()), (Shape{8, 0, 0}));
    QDArrayWrapper wrapper(arrayOf<double>({2, 3}));
    for (Indices const& indices : {Indices{huge}, {0, huge}, {1L << 61, 1L << 60}, {1, -huge}, {0, 0, 0}}) {
        EXPECT_EQ(wrapper.getElementOffsetFromIndices(indices), -1);
        EXPECT_FALSE(wrapper.setElementFromIndices(indices, 5.0));
    }
    for (Indices const& indices : {Indices{0, 3}, Indices{-1, 0}}) {
        EXPECT_FALSE(wrapper.setElementFromIndices(indices, 5.0)) << "an offset, but of no element";
    }
    EXPECT_EQ(wrapper.getElementOffsetFromIndices(Indices{1}), 1);
}

}  // namespace
}  // namespace quarna
