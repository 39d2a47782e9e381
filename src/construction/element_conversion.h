// One Python value becomes one element, or a refusal that the caller raises.
//
// An int is an instance of int or of a subclass, so also a bool; the same goes for float and complex. No method
// of an object is ever called. Ints are read in the signed 64-bit range.
#pragma once

#include "vocabulary/python.h"

#include <optional>
#include <string>

/// What a conversion came to. Without a value, exceptionType and message say what to raise.
template <class T>
struct CValueResult {
    std::optional<T> value;
    PyObject* exceptionType = nullptr;  // borrowed
    std::string message;
};

/// The value as a T, truncated toward zero; empty if T cannot hold it. Into float everything fits: beyond its
/// range as an infinity of the same sign.
template <class U, class T>
std::optional<T> convertAndCheckForOverflow(U value);

/// Converts a Python value; `coerceToLogical` lets a logical element take float and complex values.
template <class T, class = void>
struct GetCValueFromPyObjFunctor {
    CValueResult<T> operator()(PyObject* object, bool coerceToLogical) const;
};

namespace quarna {

/// What to raise for a number that T cannot hold.
template <class T, class U>
CValueResult<T> refusedOverflow(U value);

/// What to raise for an int beyond 64 bits.
inline constexpr char longOverflowText[] = "Python int too large to convert to C long";

}  // namespace quarna
