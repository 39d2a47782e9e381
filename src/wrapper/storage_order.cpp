// Reordering in blocks that stay in cache.
//
// Element (i, ..., j) of a row-major block lies at i*rowStep + ... + j, of a column-major one at
// i + ... + j*columnStep. For each position of the dimensions between the first and the last this is the
// transposition of a matrix, which goes tile by tile: a tile's rows and columns fit into the nearest cache.
#include "wrapper/storage_order.h"

#include "vocabulary/arithmetic.h"
#include "wrapper/strided_view.h"

#include <algorithm>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <utility>
#include <vector>

namespace quarna {
namespace {

constexpr long tile = 16;

struct Matrix {
    long rows;
    long columns;
    long rowStep;     // between rows of the source
    long columnStep;  // between columns of the destination
};

template <class T>
void transposeTile(T const* source, T* destination, Matrix const& matrix, long firstRow, long firstColumn)
{
    long const endRow = std::min(firstRow + tile, matrix.rows);
    long const endColumn = std::min(firstColumn + tile, matrix.columns);
    for (long column = firstColumn; column < endColumn; ++column) {
        for (long row = firstRow; row < endRow; ++row) {
            destination[row + column * matrix.columnStep] = source[row * matrix.rowStep + column];
        }
    }
}

template <class T>
void transpose(T const* source, T* destination, Matrix const& matrix)
{
    for (long column = 0; column < matrix.columns; column += tile) {
        for (long row = 0; row < matrix.rows; row += tile) {
            transposeTile(source, destination, matrix, row, column);
        }
    }
}

using Lengths = boost::container::small_vector<long, 8>;

// Dimensions of length 1 do not show in the order of elements.
Lengths lengthsAboveOne(std::span<long const> dims)
{
    Lengths lengths;
    std::copy_if(dims.begin(), dims.end(), std::back_inserter(lengths),
                 [](long length) { return length != 1; });
    return lengths;
}

bool hasOneOrderOnly(std::span<long const> dims)
{
    return lengthsAboveOne(dims).size() < 2 || checkedProduct(dims) == 0;
}

// The dimensions between the first and the last with their strides in either order, the fastest of the source
// first.
std::pair<StridedDimensions, StridedDimensions> middleDimensions(Lengths const& lengths)
{
    StridedDimensions inSource;
    StridedDimensions inDestination;
    long sourceStride = lengths.back();
    for (std::size_t i = lengths.size() - 2; i > 0; --i) {
        inSource.push_back({lengths[i], sourceStride});
        sourceStride *= lengths[i];
    }
    long destinationStride = lengths.front();
    for (std::size_t i = 1; i < lengths.size() - 1; ++i) {
        inDestination.insert(inDestination.begin(), {lengths[i], destinationStride});
        destinationStride *= lengths[i];
    }
    return {std::move(inSource), std::move(inDestination)};
}

}  // namespace

template <class T>
void convertRowMajorToColumnMajor(T const* source, T* destination, std::span<long const> dims)
{
    long const count = *checkedProduct(dims);
    if (hasOneOrderOnly(dims)) {
        std::copy(source, source + count, destination);
        return;
    }
    Lengths const lengths = lengthsAboveOne(dims);
    Matrix const matrix{lengths.front(), lengths.back(), count / lengths.front(), count / lengths.back()};
    auto [inSource, inDestination] = middleDimensions(lengths);
    Odometer sourcePosition(0, std::move(inSource));
    Odometer destinationPosition(0, std::move(inDestination));
    do {
        transpose(source + sourcePosition.offset(), destination + destinationPosition.offset(), matrix);
        destinationPosition.advance();
    } while (sourcePosition.advance());
}

template <class T>
data::TypedArray<T> makeTypedArrayFromBuf(data::ElementBuffer<T>&& buffer, bool inStorageOrder,
                                          data::ArrayFactory& factory, std::span<long const> dims)
{
    std::vector<std::size_t> const lengths(dims.begin(), dims.end());
    if (inStorageOrder || hasOneOrderOnly(dims)) {
        return factory.createArrayFromBuffer<T>(lengths, std::move(buffer));
    }
    auto reordered = factory.createBuffer<T>(static_cast<std::size_t>(*checkedProduct(dims)));
    convertRowMajorToColumnMajor<T>(buffer.get(), reordered.get(), dims);
    buffer.reset();
    return factory.createArrayFromBuffer<T>(lengths, std::move(reordered));
}

#define QUARNA_ARRAY_TYPE(number, name, element)                                                          \
    template void convertRowMajorToColumnMajor<element>(element const*, element*, std::span<long const>); \
    template data::TypedArray<element> makeTypedArrayFromBuf<element>(                                    \
        data::ElementBuffer<element>&&, bool, data::ArrayFactory&, std::span<long const>);
#include "data/array_types.def"

}  // namespace quarna
