// From nested order, the last index fastest, to the column-major order of all storage.
#pragma once

#include "data/array_factory.h"

#include <span>

namespace quarna {

/// A data array of shape `dims` from a filled buffer: handed over as it is if it stands in storage order or has
/// one order only, else reordered into a second buffer. Throws what the factory throws; the buffer is freed then.
template <class T>
data::TypedArray<T> makeTypedArrayFromBuf(data::ElementBuffer<T>&& buffer, bool inStorageOrder,
                                          data::ArrayFactory& factory, std::span<long const> dims);

/// Writes the elements of a row-major block of shape `dims` to `destination` in column-major order.
template <class T>
void convertRowMajorToColumnMajor(T const* source, T* destination, std::span<long const> dims);

}  // namespace quarna
