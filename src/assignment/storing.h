// The elements of a right side, stored where a subscript points.
//
// A signal's handler may run between any two elements. What it raises ends the work, and what was stored until then
// stays; a reshape by it is a RuntimeError.
#pragma once

#include "construction/nest_reader.h"
#include "construction/road.h"
#include "indexing/qcpp_py_array.h"

#include <vector>

namespace quarna {

bool haveSameShape(StridedDimensions const& dimensions, std::vector<long> const& lengths);

/// Stores as many elements as there are on both sides, in nested order where they do not nest alike. False with an
/// exception set. Throws.
template <class T>
bool store(QCppPyArray const& array, StridedView const& target, NestReader<T>& rightSide);

/// The fast road for an array of ours of the same type and shape, whose elements need not be read first. Declines
/// everything else, and an array that shares its elements with the target.
template <class T>
Road copyArray(QCppPyArray const& array, StridedView const& target, PyObject* value);

}  // namespace quarna
