// Small Python values that attributes and methods return.
#pragma once

#include "vocabulary/python.h"

#include <vector>

namespace quarna {

/// A new int; null with RuntimeError set.
PyObject* makePyObjectFromLong(long value);

/// A new tuple of ints; null with an exception set. By value: making the tuple can run Python code.
PyObject* makeTuple(std::vector<long> values);

}  // namespace quarna
