// The conversion rules, one overload for each kind of element.
#include "numbers/element_conversion.h"

#include "numbers/plain_number.h"
#include "vocabulary/class_table.h"
#include "vocabulary/errors.h"
#include "vocabulary/python_values.h"

#include <boost/numeric/conversion/cast.hpp>

#include <complex>
#include <concepts>
#include <limits>
#include <utility>

namespace quarna {
namespace {

template <class T>
CValueResult<T> converted(T value)
{
    CValueResult<T> result;
    result.value = value;
    return result;
}

template <class T>
CValueResult<T> refused(PyObject* exceptionType, std::string message)
{
    CValueResult<T> result;
    result.exceptionType = exceptionType;
    result.message = std::move(message);
    return result;
}

template <class T>
CValueResult<T> refusedFloat()
{
    return refused<T>(PyExc_TypeError,
                      composeText("quarna.", className<T>, " does not accept floating-point values."));
}

template <class T>
CValueResult<T> refusedComplex()
{
    return refused<T>(PyExc_TypeError,
                      composeText("quarna.", className<T>,
                                  " does not accept complex values if 'is_complex' is not set to 'True'."));
}

template <class T>
CValueResult<T> refusedLong()
{
    return refused<T>(PyExc_OverflowError, "Python int too large to convert to C long");
}

template <class T, class U>
CValueResult<T> refusedOverflow(U value)
{
    return refused<T>(
        PyExc_OverflowError,
        composeText("value (", value, ") cannot be stored in a variable of type ", className<T>, "."));
}

// What is no number of any kind, in the order in which the tests decide.
template <class T>
CValueResult<T> refusedObject(PyObject* object)
{
    const char* message = "type does not match.";
    if (pyObjectIsUnicodeOrString(object)) {
        message = "value is not numeric.";
    } else if (PySequence_Check(object)) {
        message = "sequence passed when scalar was expected.";
    } else if (object == Py_None) {
        message = "value must not be 'None'.";
    }
    return refused<T>(PyExc_TypeError, message);
}

/// The value as a T, truncated toward zero; empty if T cannot hold it. Into float everything fits: beyond its
/// range as an infinity of the same sign.
template <class U, class T>
std::optional<T> convertAndCheckForOverflow(U value)
{
    if constexpr (Single<T>) {
        return narrowed(value);
    } else if constexpr (std::floating_point<T>) {
        return value;
    } else {
        // The cast lets a NaN pass, as no comparison holds for it.
        if (value != value) {
            return std::nullopt;
        }
        try {
            return boost::numeric_cast<T>(value);
        } catch (boost::numeric::bad_numeric_cast const&) {
            return std::nullopt;
        }
    }
}

/// An int as C long, or the sign of what does not fit.
struct LongValue {
    long value;
    int overflow;
};

LongValue readLong(PyObject* object)
{
    LongValue result{};
    result.value = PyLong_AsLongAndOverflow(object, &result.overflow);
    return result;
}

std::complex<double> readComplex(PyObject* object)
{
    return {PyComplex_RealAsDouble(object), PyComplex_ImagAsDouble(object)};
}

// An element from an int.

template <Double T>
CValueResult<T> fromLong(LongValue number)
{
    return number.overflow != 0 ? refusedLong<T>() : converted(static_cast<T>(number.value));
}

// An int beyond 64 bits is not beyond the range of float, but it reads as infinite all the same.
template <Single T>
CValueResult<T> fromLong(LongValue number)
{
    constexpr T infinity = std::numeric_limits<T>::infinity();
    if (number.overflow != 0) {
        return converted(number.overflow > 0 ? infinity : -infinity);
    }
    return converted(static_cast<T>(number.value));
}

template <Logical T>
CValueResult<T> fromLong(LongValue number)
{
    return number.overflow != 0 ? refusedLong<T>() : converted(number.value != 0);
}

template <Integer T>
CValueResult<T> fromLong(LongValue number)
{
    if (number.overflow != 0) {
        return refusedLong<T>();
    }
    auto const value = convertAndCheckForOverflow<long, T>(number.value);
    return value ? converted(*value) : refusedOverflow<T>(number.value);
}

// A complex element takes the ints that its real part takes.
template <Complex T>
CValueResult<T> fromLong(LongValue number)
{
    CValueResult<RealPartOf<T>> part = fromLong<RealPartOf<T>>(number);
    return part.value ? converted(T(*part.value)) : refused<T>(part.exceptionType, std::move(part.message));
}

// An element from a float or complex.

template <Complex T>
CValueResult<T> fromParts(std::complex<double> number)
{
    using Real = RealPartOf<T>;
    auto const real = convertAndCheckForOverflow<double, Real>(number.real());
    if (!real) {
        return refusedOverflow<T>(number.real());
    }
    auto const imaginary = convertAndCheckForOverflow<double, Real>(number.imag());
    return imaginary ? converted(T(*real, *imaginary)) : refusedOverflow<T>(number.imag());
}

template <class T>
CValueResult<T> fromFloat(double value, bool coerceToLogical)
{
    if constexpr (Complex<T>) {
        return fromParts<T>(value);
    } else if constexpr (Double<T>) {
        return converted(value);
    } else if constexpr (Single<T>) {
        return converted(narrowed(value));
    } else {
        if (Logical<T> && coerceToLogical) {
            return converted(static_cast<T>(value != 0.0));
        }
        return refusedFloat<T>();
    }
}

template <class T>
CValueResult<T> fromComplex(std::complex<double> value, bool coerceToLogical)
{
    if constexpr (Complex<T>) {
        return fromParts<T>(value);
    } else if constexpr (Logical<T>) {
        return coerceToLogical ? converted(value != 0.0) : refusedComplex<T>();
    } else {
        return refusedComplex<T>();
    }
}

}  // namespace

template <class T>
CValueResult<T> convertNumber(Number const& number, bool coerceToLogical)
{
    switch (number.kind) {
    case Number::Kind::Float:
        return fromFloat<T>(number.value.real(), coerceToLogical);
    case Number::Kind::Int:
        return fromLong<T>({number.integer, number.overflow});
    case Number::Kind::Complex:
        return fromComplex<T>(number.value, coerceToLogical);
    }
    __builtin_unreachable();
}

template <class T, class Unused>
CValueResult<T> GetCValueFromPyObjFunctor<T, Unused>::operator()(PyObject* object, bool coerceToLogical) const
{
    if (PyFloat_Check(object)) {
        return fromFloat<T>(PyFloat_AS_DOUBLE(object), coerceToLogical);
    }
    if (pyObjectIsLong(object)) {
        return fromLong<T>(readLong(object));
    }
    if (PyComplex_Check(object)) {
        return fromComplex<T>(readComplex(object), coerceToLogical);
    }
    return refusedObject<T>(object);
}

#define QUARNA_ARRAY_TYPE(number, name, element)        \
    template struct GetCValueFromPyObjFunctor<element>; \
    template CValueResult<element> convertNumber<element>(Number const&, bool);
#include "data/array_types.def"

}  // namespace quarna
