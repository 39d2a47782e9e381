// Elements from numbers, for the common case: a value that fits, told by a flag instead of a record of refusal.
#pragma once

#include "vocabulary/python.h"

#include "elements/element.h"
#include "vocabulary/python_values.h"

#include <complex>
#include <concepts>
#include <cstdint>
#include <limits>
#include <type_traits>

namespace quarna {

/// What the conversion makes of a number, if it is plain; else the value says nothing, and whether the number is
/// refused, and how, only the conversion itself knows.
template <class T>
struct Plain {
    T value;
    bool isPlain;
};

/// The nearest float; beyond the range of float an infinity of the same sign.
inline float narrowed(double value)
{
    constexpr auto largest = static_cast<double>(std::numeric_limits<float>::max());
    constexpr float infinity = std::numeric_limits<float>::infinity();
    if (value > largest) {
        return infinity;
    }
    return value < -largest ? -infinity : static_cast<float>(value);
}

namespace detail {

/// One part of a complex element. The bounds of 64 bits are no doubles: what is next to them is left alone.
template <class Real>
Plain<Real> plainPart(double value)
{
    if constexpr (Double<Real>) {
        return {value, true};
    } else if constexpr (Single<Real>) {
        return {narrowed(value), true};
    } else {
        constexpr bool isWide = sizeof(Real) == 8;
        constexpr auto lowest = static_cast<double>(std::numeric_limits<Real>::lowest()) - (isWide ? 0 : 1);
        constexpr auto beyond = static_cast<double>(std::numeric_limits<Real>::max()) + (isWide ? 0 : 1);
        bool const fits = value > lowest && value < beyond;
        return {fits ? static_cast<Real>(value) : Real{}, fits};
    }
}

}  // namespace detail

template <class T>
Plain<T> plainFromComplex(std::complex<double> value, bool coerceToLogical)
{
    if constexpr (Complex<T>) {
        auto const real = detail::plainPart<RealPartOf<T>>(value.real());
        auto const imaginary = detail::plainPart<RealPartOf<T>>(value.imag());
        return {T(real.value, imaginary.value), real.isPlain && imaginary.isPlain};
    } else if constexpr (Logical<T>) {
        return {value != 0.0, coerceToLogical};
    } else {
        return {T{}, false};
    }
}

template <class T>
Plain<T> plainFromFloat(double value, bool coerceToLogical)
{
    if constexpr (std::floating_point<T>) {
        return detail::plainPart<T>(value);
    } else if constexpr (Logical<T>) {
        return {value != 0.0, coerceToLogical};
    } else if constexpr (Complex<T>) {
        auto const real = detail::plainPart<RealPartOf<T>>(value);
        return {T(real.value), real.isPlain};
    } else {
        return {T{}, false};
    }
}

namespace detail {

template <std::integral Int>
bool isNegative(Int value)
{
    if constexpr (std::is_signed_v<Int>) {
        return value < 0;
    } else {
        return false;
    }
}

template <Integer Real, std::integral Int>
Plain<Real> plainInteger(Int value)
{
    auto const converted = static_cast<Real>(value);
    return {converted, static_cast<Int>(converted) == value && isNegative(converted) == isNegative(value)};
}

}  // namespace detail

template <class T, std::integral Int>
Plain<T> plainFromInteger(Int value)
{
    using Real = RealPartOf<T>;
    if constexpr (Logical<T>) {
        return {value != 0, true};
    } else if constexpr (std::floating_point<Real>) {
        return {T(static_cast<Real>(value)), true};
    } else {
        auto const plain = detail::plainInteger<Real>(value);
        return {T(plain.value), plain.isPlain};
    }
}

/// The same of an element, as if it had come as a Python number. Such a number holds no int beyond 63 bits.
template <class T, class Source>
Plain<T> plainFromElement(Source element, bool coerceToLogical)
{
    if constexpr (Complex<Source>) {
        return plainFromComplex<T>({static_cast<double>(element.real()), static_cast<double>(element.imag())},
                                   coerceToLogical);
    } else if constexpr (std::floating_point<Source>) {
        return plainFromFloat<T>(static_cast<double>(element), coerceToLogical);
    } else if constexpr (Logical<Source> || std::same_as<Source, char16_t>) {
        return plainFromInteger<T>(static_cast<int>(element));
    } else {
        auto plain = plainFromInteger<T>(element);
        if constexpr (std::same_as<Source, std::uint64_t>) {
            plain.isPlain = plain.isPlain && static_cast<std::int64_t>(element) >= 0;
        }
        return plain;
    }
}

namespace detail {

/// An exact int, if it has at most 64 bits. Sets no exception.
template <class T>
Plain<T> plainFromInt(PyObject* object)
{
    long value = 0;
    int overflow = 0;
    if (!takeOneDigit(object, value)) {
        value = PyLong_AsLongAndOverflow(object, &overflow);
    }
    auto plain = plainFromInteger<T>(value);
    plain.isPlain = plain.isPlain && overflow == 0;
    return plain;
}

/// Of every kind of number, in a call of its own.
template <class T>
[[gnu::noinline]] Plain<T> plainFromAny(PyObject* object, bool coerceToLogical)
{
    PyTypeObject const* const type = Py_TYPE(object);
    if (type == &PyFloat_Type) {
        return plainFromFloat<T>(PyFloat_AS_DOUBLE(object), coerceToLogical);
    }
    if (type == &PyLong_Type) {
        return plainFromInt<T>(object);
    }
    if (type == &PyBool_Type) {
        return plainFromInteger<T>(object == Py_True ? 1 : 0);
    }
    if (type == &PyComplex_Type) {
        Py_complex const value = reinterpret_cast<PyComplexObject const*>(object)->cval;
        return plainFromComplex<T>({value.real, value.imag}, coerceToLogical);
    }
    return {T{}, false};
}

}  // namespace detail

/// The element that an exact float, int or complex, or a bool, is. Runs no Python code, and takes no memory. What arrays
/// of T are made from as a rule is read without a call.
template <class T>
[[gnu::always_inline]] inline Plain<T> plainElement(PyObject* object, bool coerceToLogical)
{
    PyTypeObject const* const type = Py_TYPE(object);
    if constexpr (Complex<T>) {
        if (type == &PyComplex_Type) {
            Py_complex const value = reinterpret_cast<PyComplexObject const*>(object)->cval;
            return plainFromComplex<T>({value.real, value.imag}, coerceToLogical);
        }
    } else if constexpr (std::floating_point<T>) {
        if (type == &PyFloat_Type) {
            return plainFromFloat<T>(PyFloat_AS_DOUBLE(object), coerceToLogical);
        }
    } else if constexpr (Logical<T>) {
        if (type == &PyBool_Type) {
            return {object == Py_True, true};
        }
    } else if (long value = 0; type == &PyLong_Type && takeOneDigit(object, value)) {
        return plainFromInteger<T>(value);
    }
    return detail::plainFromAny<T>(object, coerceToLogical);
}

}  // namespace quarna
