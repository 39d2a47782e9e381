// Byte strides of contiguous storage.
#pragma once

#include <span>
#include <vector>

namespace quarna {

/// The distance in bytes between neighbours along each dimension of a contiguous block, for order 'F' (the first
/// index fastest) or 'C' (the last). A stride that needs more than 63 bits is 0: only a block without elements
/// can have it, which no index reaches into.
std::vector<long> contiguousStrides(std::span<long const> shape, long elementSize, char order);

}  // namespace quarna
