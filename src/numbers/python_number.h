// From an element to a Python number: one table for subscripts, iteration and lists.
#pragma once

#include "vocabulary/python.h"

#include "elements/element.h"

#include <concepts>
#include <cstdint>

namespace quarna {

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
