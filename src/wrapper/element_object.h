// From an element to a Python number: one table for subscripts, iteration, lists and text.
#pragma once

#include "vocabulary/python.h"

#include "vocabulary/element.h"

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <cstring>

namespace quarna {

/// The element at an address, which memory from outside need not have aligned. A logical byte from outside may be
/// any: not 0 is true.
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

/// The element at an offset, counted in elements, of a block.
template <class T>
T loadElementAt(void const* block, long offset)
{
    return loadElement<T>(static_cast<unsigned char const*>(block) + offset * long{sizeof(T)});
}

/// Copies a run of elements of a block to `destination`; returns the end of the copy.
template <class T>
T* loadRun(void const* block, long offset, long length, long stride, T* destination)
{
    if (stride == 1 && !Logical<T>) {
        auto const* const first = static_cast<unsigned char const*>(block) + offset * long{sizeof(T)};
        std::memcpy(static_cast<void*>(destination), first, static_cast<std::size_t>(length) * sizeof(T));
        return destination + length;
    }
    for (long i = 0; i < length; ++i) {
        *destination++ = loadElementAt<T>(block, offset + i * stride);
    }
    return destination;
}

/// A float, int, bool or complex, as a new reference; null with an exception set. Parts of complex integers
/// become doubles, which hold 53 bits.
template <class T>
PyObject* makeNumber(T element)
{
    if constexpr (Complex<T>) {
        return PyComplex_FromDoubles(static_cast<double>(element.real()),
                                     static_cast<double>(element.imag()));
    } else if constexpr (Logical<T>) {
        return PyBool_FromLong(element);
    } else if constexpr (std::floating_point<T>) {
        return PyFloat_FromDouble(static_cast<double>(element));
    } else if constexpr (std::same_as<T, std::uint64_t>) {
        return PyLong_FromUnsignedLong(element);
    } else {
        return PyLong_FromLong(static_cast<long>(element));
    }
}

}  // namespace quarna
