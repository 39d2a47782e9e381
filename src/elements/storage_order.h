// From nested order, the last index fastest, to the column-major order of all storage.
#pragma once

#include <cstddef>
#include <span>

namespace quarna {

/// Whether row-major and column-major order are the same: fewer than two dimensions are longer than 1, or one is 0.
bool hasOneOrderOnly(std::span<long const> dims);

/// Writes the elements of a row-major block of shape `dims` to `destination` in column-major order. An element has
/// 1, 2, 4, 8 or 16 bytes, of which nothing else matters here; neither block need be aligned.
void convertRowMajorToColumnMajor(void const* source, void* destination, std::span<long const> dims,
                                  std::size_t elementSize);

}  // namespace quarna
