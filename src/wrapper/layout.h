// Byte strides of contiguous storage.
#pragma once

#include <optional>
#include <span>
#include <vector>

namespace quarna {

/// The distance in bytes between neighbours along each dimension of a contiguous block, for order 'F' (the first
/// index fastest) or 'C' (the last). Empty if a stride needs more than 63 bits, which a length of 0 allows in a
/// block that itself is small.
std::optional<std::vector<long>> contiguousStrides(std::span<long const> shape, long elementSize, char order);

}  // namespace quarna
