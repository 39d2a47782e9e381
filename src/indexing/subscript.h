// Reading subscripts from Python.
#pragma once

#include "vocabulary/python.h"

#include "elements/index_items.h"

#include <optional>

namespace quarna {

/// The value of an int, of a subclass or of a bool; empty for another object, whose __index__ is not asked. An
/// int beyond Py_ssize_t gives -1 with OverflowError set.
std::optional<long> getIntegerIndexFromIndexObject(PyObject* index);

/// The bounds of a slice object as Python code gave them. Reading them can run Python code.
struct SliceBounds {
    Py_ssize_t start = 0;
    Py_ssize_t stop = 0;
    Py_ssize_t step = 0;
};

/// Empty with an exception set: ValueError for a step that is 0 or no integer, CPython's own for the others.
std::optional<SliceBounds> unpackSlice(PyObject* slice);

/// The bounds clipped to a dimension, as Python clips those of a list.
SliceIndexItem clippedSlice(SliceBounds bounds, long length);

}  // namespace quarna
