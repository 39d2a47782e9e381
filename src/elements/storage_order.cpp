// Reordering in blocks that stay in cache.
//
// Element (i, ..., j) of a row-major block lies at i*rowStep + ... + j, of a column-major one at
// i + ... + j*columnStep. For each position of the dimensions between the first and the last this is the
// transposition of a matrix, which goes tile by tile: a tile's rows and columns fit into the nearest cache.
#include "elements/storage_order.h"

#include "elements/arithmetic.h"
#include "elements/strided_view.h"

#include <algorithm>
#include <cstring>
#include <iterator>
#include <utility>

namespace quarna {
namespace {

constexpr long tile = 16;

struct Matrix {
    long rows;
    long columns;
    long rowStep;     // between rows of the source
    long columnStep;  // between columns of the destination
};

using Bytes = unsigned char;

template <long size>
void transposeTile(Bytes const* source, Bytes* destination, Matrix const& matrix, long firstRow,
                   long firstColumn)
{
    long const endRow = std::min(firstRow + tile, matrix.rows);
    long const endColumn = std::min(firstColumn + tile, matrix.columns);
    for (long column = firstColumn; column < endColumn; ++column) {
        for (long row = firstRow; row < endRow; ++row) {
            std::memcpy(destination + (row + column * matrix.columnStep) * size,
                        source + (row * matrix.rowStep + column) * size, size);
        }
    }
}

template <long size>
void transpose(Bytes const* source, Bytes* destination, Matrix const& matrix)
{
    for (long column = 0; column < matrix.columns; column += tile) {
        for (long row = 0; row < matrix.rows; row += tile) {
            transposeTile<size>(source, destination, matrix, row, column);
        }
    }
}

using Transpose = void (*)(Bytes const* source, Bytes* destination, Matrix const& matrix);

Transpose transposeFor(std::size_t elementSize)
{
    switch (elementSize) {
    case 1:
        return &transpose<1>;
    case 2:
        return &transpose<2>;
    case 4:
        return &transpose<4>;
    case 8:
        return &transpose<8>;
    default:
        return &transpose<16>;
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

bool hasOneOrderOnly(std::span<long const> dims)
{
    return lengthsAboveOne(dims).size() < 2 || checkedProduct(dims) == 0;
}

void convertRowMajorToColumnMajor(void const* source, void* destination, std::span<long const> dims,
                                  std::size_t elementSize)
{
    long const count = *checkedProduct(dims);
    if (hasOneOrderOnly(dims)) {
        std::memcpy(destination, source, static_cast<std::size_t>(count) * elementSize);
        return;
    }
    Lengths const lengths = lengthsAboveOne(dims);
    Matrix const matrix{lengths.front(), lengths.back(), count / lengths.front(), count / lengths.back()};
    Transpose const transposeOne = transposeFor(elementSize);
    auto const size = static_cast<long>(elementSize);
    auto [inSource, inDestination] = middleDimensions(lengths);
    Odometer sourcePosition(0, std::move(inSource));
    Odometer destinationPosition(0, std::move(inDestination));
    do {
        transposeOne(static_cast<Bytes const*>(source) + sourcePosition.offset() * size,
                     static_cast<Bytes*>(destination) + destinationPosition.offset() * size, matrix);
        destinationPosition.advance();
    } while (sourcePosition.advance());
}

}  // namespace quarna
