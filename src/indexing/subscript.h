// Reading subscripts from Python.
#pragma once

#include "vocabulary/python.h"

#include "elements/index_items.h"
#include "vocabulary/python_values.h"

namespace quarna {

/// What an object is as a subscript.
enum class SubscriptKind { Integer, Other, Refused };

/// An int of any length, or what is none: as below.
SubscriptKind readRareIndex(PyObject* index, long& integer);

/// An int, of a subclass or a bool too, or another object, whose __index__ is not asked. OverflowError is set for an int
/// beyond Py_ssize_t.
inline SubscriptKind getIntegerIndexFromIndexObject(PyObject* index, long& integer)
{
    bool const isShort = PyLong_CheckExact(index) && takeOneDigit(index, integer);
    return isShort ? SubscriptKind::Integer : readRareIndex(index, integer);
}

/// The bounds of a slice object as Python code gave them. Reading them can run Python code.
struct SliceBounds {
    Py_ssize_t start = 0;
    Py_ssize_t stop = 0;
    Py_ssize_t step = 0;
};

/// False with an exception set: ValueError for a step that is 0 or no integer, CPython's own for the others.
bool unpackSlice(PyObject* slice, SliceBounds& bounds);

/// The bounds clipped to a dimension, as Python clips those of a list.
SliceIndexItem clippedSlice(SliceBounds bounds, long length);

}  // namespace quarna
