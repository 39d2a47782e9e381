// Which Python object is an int, a str or absent: by type flags, never by calling into the object.
#pragma once

#include "vocabulary/python.h"

namespace quarna {

/// An int or an instance of a subclass, bool included.
inline bool pyObjectIsLong(PyObject* object)
{
    return PyLong_Check(object) != 0;
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
