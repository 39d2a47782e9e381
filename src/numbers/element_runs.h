// Runs of elements of one type into elements of another, as if each had come as a Python number.
#pragma once

#include "data/element_source.h"

namespace quarna {

/// Converts `count` elements, `stride` apart from an offset of a block on, to `destination`. False if one of them is
/// not plain (see numbers/plain_number.h): then what stands in the destination says nothing.
template <class T>
using ConvertRun = bool (*)(void const* block, long offset, long stride, long count, T* destination,
                            bool coerceToLogical);

/// The conversion for the runs of a source.
template <class T>
ConvertRun<T> runConverter(ElementSource const& source);

}  // namespace quarna
