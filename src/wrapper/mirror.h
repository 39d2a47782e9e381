// Making what a wrapper derives from its data array: the mirror and the strides.
#pragma once

#include "wrapper/qd_array_wrapper.h"

#include <span>
#include <vector>

namespace quarna {

/// A new block with the bytes of all elements. Throws std::bad_alloc without memory.
MirrorBlock makeMirror(data::Array const& array, long sizeInBytes);

/// contiguousStrides, or number 26 thrown where they do not fit.
std::vector<long> requireStrides(std::span<long const> shape, long elementSize, char order);

}  // namespace quarna
