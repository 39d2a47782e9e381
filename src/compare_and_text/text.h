// The text of arrays.
#pragma once

#include "vocabulary/python.h"

#include "indexing/qcpp_py_array.h"

namespace quarna {

/// The nested list as Python prints it without blanks, as a constructor call if `asRepr`: a new str; null with an
/// exception set. Throws std::bad_alloc. T is the array's element type.
template <class T>
PyObject* textOf(QCppPyArray const& array, bool asRepr);

}  // namespace quarna
