// The array object: a type, a shape as it was given, and the block of its elements.
#pragma once

#include "block.h"
#include "quarna_data_array/numbers.h"

#include <cstddef>
#include <cstdint>
#include <memory>
#include <span>

namespace quarna::library {

using Shape = std::span<std::size_t const>;

enum class Layout : std::int32_t {
    ColumnMajor = QUARNA_LAYOUT_COLUMN_MAJOR,
    RowMajor = QUARNA_LAYOUT_ROW_MAJOR,
};

}  // namespace quarna::library

/// The sole owner of its block. Whoever counts the holders of an array says at each call whether it has but
/// one; the array itself does not know. After its block was handed over it has no elements and no dimensions.
/// The lengths of its dimensions lie behind it in the same memory.
struct quarna_array {
    quarna::library::Block block;
    std::size_t count;
    std::size_t dimensionCount;
    std::int32_t type;
    quarna::library::Layout layout;

    std::size_t* lengths() { return reinterpret_cast<std::size_t*>(this + 1); }
    quarna::library::Shape shape() const
    {
        return {reinterpret_cast<std::size_t const*>(this + 1), dimensionCount};
    }
};

namespace quarna::library {

struct DeleteArray {
    void operator()(quarna_array* array) const;
};
using ArrayOwner = std::unique_ptr<quarna_array, DeleteArray>;

/// A list of dimensions. Throws SystemError if there is no list.
Shape shapeFrom(std::size_t const* dimensions, std::size_t count);

/// The array that owns the block. Throws SystemError for a bad type, TooManyElements for a shape whose elements
/// no size_t counts, or their bytes no ptrdiff_t, std::bad_alloc; the block is then freed.
ArrayOwner makeArray(std::int32_t type, Shape shape, Block block, Layout layout = Layout::ColumnMajor);

/// The array of that shape with all elements 0. Throws as above.
ArrayOwner makeZeroedArray(std::int32_t type, Shape shape);

}  // namespace quarna::library
