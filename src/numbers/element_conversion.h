// One Python value becomes one element, or a refusal that the caller raises.
//
// An int is an instance of int or of a subclass, so also a bool; the same goes for float and complex. No method
// of an object is ever called. Ints are read in the signed 64-bit range.
#pragma once

#include "vocabulary/python.h"

#include "elements/element.h"

#include <complex>
#include <concepts>
#include <cstdint>
#include <optional>
#include <string>

namespace quarna {

/// What a conversion came to. Without a value, exceptionType and message say what to raise.
template <class T>
struct CValueResult {
    std::optional<T> value;
    PyObject* exceptionType = nullptr;  // borrowed
    std::string message;
};

/// Converts a Python value; `coerceToLogical` lets a logical element take float and complex values.
template <class T, class = void>
struct GetCValueFromPyObjFunctor {
    CValueResult<T> operator()(PyObject* object, bool coerceToLogical) const;
};

/// What a Python number holds: a float, an int as far as 64 bits reach, or a complex.
struct Number {
    enum class Kind { Float, Int, Complex };

    Kind kind;
    std::complex<double> value;  // of a float or complex
    long integer;                // of an int
    int overflow;                // the sign of an int beyond 64 bits, else 0
};

/// The number that an element is to Python, without the Python object.
template <class T>
Number numberFromElement(T element)
{
    if constexpr (Complex<T>) {
        return {Number::Kind::Complex,
                {static_cast<double>(element.real()), static_cast<double>(element.imag())},
                0,
                0};
    } else if constexpr (std::floating_point<T>) {
        return {Number::Kind::Float, static_cast<double>(element), 0, 0};
    } else {
        bool const overflows = std::same_as<T, std::uint64_t> && static_cast<long>(element) < 0;
        return {Number::Kind::Int, 0.0, static_cast<long>(element), overflows ? 1 : 0};
    }
}

/// Converts a number as if it had come as a Python object.
template <class T>
CValueResult<T> convertNumber(Number const& number, bool coerceToLogical);

/// Whether every element of T comes back as it was from its way through a Python number. A double holds 53 bits
/// of an integer part, and an int is taken in the signed range only.
template <class T>
inline constexpr bool survivesPythonNumber = std::floating_point<RealPartOf<T>> ||
                                             sizeof(RealPartOf<T>) < 8 || std::same_as<T, std::int64_t>;

}  // namespace quarna
