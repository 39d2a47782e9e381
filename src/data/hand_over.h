// A filled buffer becomes a data array, reordered on the way where it must be.
#pragma once

#include "data/array_factory.h"

#include <span>

namespace quarna::data {

/// A data array of shape `dims` from a filled buffer: handed over as it is if it stands in storage order or has
/// one order only, else reordered into a second buffer. Throws what the factory throws; the buffer is freed then.
template <class T>
TypedArray<T> makeTypedArrayFromBuf(ElementBuffer<T>&& buffer, bool inStorageOrder, ArrayFactory& factory,
                                    std::span<long const> dims);

}  // namespace quarna::data
