// Assignment through subscripts.
//
// Each function returns 0, or -1 with an exception set and nothing written unless it says otherwise. The right side
// is read in full before the array is looked at, since Python code may run meanwhile. T is the array's element type.
#pragma once

#include "indexing/qcpp_py_array.h"

namespace quarna {

/// An integer subscript as Python gave it, tried against the full `length` of the dimension.
template <class T>
int setItemsFromFinalOrNonFinalIntegerIndex(QCppPyArray const& array, long index, long length,
                                            PyObject* value);

/// A slice of the last dimension, whose right side is flat.
template <class T>
int setIndividualElementsFromFlatSeqOfMultipleIntegerIndices(QCppPyArray const& array,
                                                             SliceIndexItem const& item, PyObject* value);

/// A slice with dimensions behind it, whose right side has any nesting. If the counts disagree, the leading
/// elements have been written when it fails.
template <class T>
int setMultipleElementsFromNonFinalSliceIndex(QCppPyArray const& array, SliceIndexItem item, PyObject* value);

}  // namespace quarna
