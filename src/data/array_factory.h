// Makes blocks of elements and arrays. Made where needed; no factory outlives the operation that made it.
#pragma once

#include "data/typed_array.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace quarna::data {

class ArrayFactory {
public:
    ArrayFactory();

    /// A block for `count` elements, never null, whose contents are to be written before it is used.
    template <class T>
    ElementBuffer<T> createBuffer(std::size_t count);

    /// An array that owns the block. The block is gone from `buffer` in failure too.
    template <class T>
    TypedArray<T> createArrayFromBuffer(std::vector<std::size_t> const& dimensions, ElementBuffer<T> buffer,
                                        MemoryLayout layout = MemoryLayout::COLUMN_MAJOR);

    /// A 1-by-1 array.
    template <class T>
    TypedArray<T> createScalar(T value);

    /// An array whose elements are set afterwards.
    template <class T>
    TypedArray<T> createArray(std::vector<std::size_t> const& dimensions);

private:
    std::unique_ptr<impl::ArrayFactoryImpl, void (*)(impl::ArrayFactoryImpl*)> m_impl;
};

}  // namespace quarna::data
