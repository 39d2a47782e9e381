// Assignment to one element.
#pragma once

#include "indexing/qcpp_py_array.h"

namespace quarna {

/// Writes the element at an index of the last dimension; the array's integers name the rest. 0, or -1 with an exception
/// set and nothing written. T is the array's element type.
template <class T>
int setItemViaFinalIntegerIndex(QCppPyArray const& array, long index, PyObject* value);

}  // namespace quarna
