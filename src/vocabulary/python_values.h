// Which Python object is an int, a str or absent, and which int: by type flags and memory, never by calling into the
// object.
#pragma once

#include "vocabulary/python.h"

#if PY_VERSION_HEX < 0x030B0000
#include <longintrepr.h>
#endif

namespace quarna {

/// An int or an instance of a subclass, bool included.
inline bool pyObjectIsLong(PyObject* object)
{
    return PyLong_Check(object) != 0;
}

/// The value of an int of one digit, as CPython keeps it: most ints need no call.
inline bool takeOneDigit(PyObject* object, long& value)
{
    auto const* const number = reinterpret_cast<PyLongObject const*>(object);
#if PY_VERSION_HEX >= 0x030C0000
    if (PyUnstable_Long_IsCompact(number) == 0) {
        return false;
    }
    value = PyUnstable_Long_CompactValue(number);
#else
    Py_ssize_t const size = Py_SIZE(number);
    if (size < -1 || size > 1) {
        return false;
    }
    value = size * static_cast<long>(number->ob_digit[0]);
#endif
    return true;
}

/// A str or an instance of a subclass; bytes are none.
inline bool pyObjectIsUnicodeOrString(PyObject* object)
{
    return PyUnicode_Check(object) != 0;
}

/// Null or None: an argument that was not given.
inline bool pyObjectIsEmpty(PyObject* object)
{
    return object == nullptr || object == Py_None;
}

}  // namespace quarna
