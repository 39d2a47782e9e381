// Making what a wrapper derives from its data array: the mirror.
#pragma once

#include "wrapper/qd_array_wrapper.h"

namespace quarna {

/// A new block with the bytes of all elements. Throws std::bad_alloc without memory.
MirrorBlock makeMirror(data::Array const& array, long sizeInBytes);

}  // namespace quarna
