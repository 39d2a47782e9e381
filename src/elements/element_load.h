// Elements in blocks of memory, read and written wherever they lie: memory from outside need not be aligned.
#pragma once

#include "elements/element.h"

#include <cstddef>
#include <cstring>

namespace quarna {

/// The element at an address. A logical byte from outside may be any: not 0 is true.
template <class T>
T loadElement(void const* address)
{
    if constexpr (Logical<T>) {
        return *static_cast<unsigned char const*>(address) != 0;
    } else {
        T element;
        std::memcpy(&element, address, sizeof(T));
        return element;
    }
}

/// The address at an offset, counted in elements, of a block.
template <class T>
unsigned char const* addressAt(void const* block, long offset)
{
    return static_cast<unsigned char const*>(block) + offset * long{sizeof(T)};
}

template <class T>
T loadElementAt(void const* block, long offset)
{
    return loadElement<T>(addressAt<T>(block, offset));
}

template <class T>
void storeElementAt(void* block, long offset, T element)
{
    std::memcpy(const_cast<unsigned char*>(addressAt<T>(block, offset)), &element, sizeof(T));
}

/// Copies a run of elements of a block to `destination`; returns the end of the copy.
template <class T>
T* loadRun(void const* block, long offset, long length, long stride, T* destination)
{
    if (stride == 1 && !Logical<T>) {
        std::memcpy(static_cast<void*>(destination), addressAt<T>(block, offset),
                    static_cast<std::size_t>(length) * sizeof(T));
        return destination + length;
    }
    for (long i = 0; i < length; ++i) {
        *destination++ = loadElementAt<T>(block, offset + i * stride);
    }
    return destination;
}

/// Copies `count` elements to a run of a block.
template <class T>
void storeRun(void* block, long offset, long count, long stride, T const* elements)
{
    if (stride == 1) {
        std::memcpy(const_cast<unsigned char*>(addressAt<T>(block, offset)), elements,
                    static_cast<std::size_t>(count) * sizeof(T));
        return;
    }
    for (long i = 0; i < count; ++i) {
        storeElementAt(block, offset + i * stride, elements[i]);
    }
}

/// Copies a run of one block to a run of another, neither part of the other.
template <class T>
void copyRun(void const* from, long fromOffset, long fromStride, void* to, long toOffset, long toStride,
             long count)
{
    if (fromStride == 1 && toStride == 1 && !Logical<T>) {
        std::memcpy(const_cast<unsigned char*>(addressAt<T>(to, toOffset)), addressAt<T>(from, fromOffset),
                    static_cast<std::size_t>(count) * sizeof(T));
        return;
    }
    for (long i = 0; i < count; ++i) {
        storeElementAt(to, toOffset + i * toStride, loadElementAt<T>(from, fromOffset + i * fromStride));
    }
}

}  // namespace quarna
