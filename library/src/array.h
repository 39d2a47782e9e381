// The array object: a type, a shape as it was given, and the block of its elements.
#pragma once

#include "block.h"
#include "quarna_data_array/numbers.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <vector>

namespace quarna::library {

using Shape = std::vector<std::size_t>;

enum class Layout : std::int32_t {
    ColumnMajor = QUARNA_LAYOUT_COLUMN_MAJOR,
    RowMajor = QUARNA_LAYOUT_ROW_MAJOR,
};

}  // namespace quarna::library

/// The sole owner of its block. Whoever counts the holders of an array says at each call whether it has but
/// one; the array itself does not know. After its block was handed over it has no elements and no dimensions.
struct quarna_array {
    std::int32_t type;
    quarna::library::Shape dimensions;
    std::size_t count;
    quarna::library::Block block;
    quarna::library::Layout layout;
};

namespace quarna::library {

/// A copy of a list of dimensions. Throws SystemError if there is no list, std::bad_alloc.
Shape copyShape(std::size_t const* dimensions, std::size_t count);

/// The array that owns the block. Throws SystemError for a bad type, TooManyElements for a shape whose elements
/// no size_t counts, or their bytes no ptrdiff_t, std::bad_alloc; the block is then freed.
std::unique_ptr<quarna_array> makeArray(std::int32_t type, Shape dimensions, Block block,
                                        Layout layout = Layout::ColumnMajor);

/// The array of that shape with all elements 0. Throws as above.
std::unique_ptr<quarna_array> makeZeroedArray(std::int32_t type, Shape dimensions);

}  // namespace quarna::library
