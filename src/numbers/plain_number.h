// Elements from Python's own numbers, for the common case: exact types and values that fit.
#pragma once

#include "vocabulary/python.h"

#include "elements/element.h"

#include <cmath>
#include <limits>
#include <optional>
#include <type_traits>

namespace quarna {

namespace detail {

/// An exact int or a bool, if it has at most 64 bits. Sets no exception.
inline std::optional<long> plainLong(PyObject* object)
{
    if (!PyLong_CheckExact(object) && !PyBool_Check(object)) {
        return std::nullopt;
    }
    int overflow = 0;
    long const value = PyLong_AsLongAndOverflow(object, &overflow);
    return overflow == 0 ? std::optional(value) : std::nullopt;
}

inline std::optional<double> plainDouble(PyObject* object)
{
    return PyFloat_CheckExact(object) ? std::optional(PyFloat_AS_DOUBLE(object)) : std::nullopt;
}

template <std::floating_point T>
std::optional<T> narrowedIfItFits(double value)
{
    bool const fits = !(std::fabs(value) > static_cast<double>(std::numeric_limits<T>::max())) || Double<T>;
    return fits ? std::optional(static_cast<T>(value)) : std::nullopt;
}

}  // namespace detail

/// The element that the conversion makes of a number; empty for whatever it would refuse, and for all that is not
/// plain: only the conversion itself knows. Runs no Python code, and takes no memory.
template <class T>
std::optional<T> plainElement(PyObject* object, bool coerceToLogical)
{
    using Real = RealPartOf<T>;
    if constexpr (std::floating_point<Real>) {
        if (auto const value = detail::plainDouble(object)) {
            return detail::narrowedIfItFits<Real>(*value);
        }
    }
    if (auto const value = detail::plainLong(object)) {
        if constexpr (Logical<T>) {
            return *value != 0;
        } else if constexpr (Integer<Real>) {
            auto const element = static_cast<Real>(*value);
            bool const fits = static_cast<long>(element) == *value && (std::is_signed_v<Real> || *value >= 0);
            return fits ? std::optional<T>(element) : std::nullopt;
        } else {
            return static_cast<Real>(*value);
        }
    }
    if constexpr (Logical<T>) {
        auto const value = coerceToLogical ? detail::plainDouble(object) : std::nullopt;
        return value ? std::optional(*value != 0.0) : std::nullopt;
    } else if constexpr (ComplexFloating<T>) {
        if (PyComplex_CheckExact(object)) {
            Py_complex const value = PyComplex_AsCComplex(object);
            auto const real = detail::narrowedIfItFits<Real>(value.real);
            auto const imaginary = detail::narrowedIfItFits<Real>(value.imag);
            return real && imaginary ? std::optional<T>(T(*real, *imaginary)) : std::nullopt;
        }
    }
    return std::nullopt;
}

}  // namespace quarna
