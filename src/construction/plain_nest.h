// The fast road for whole nests of exact lists and tuples with plain numbers: straight to column-major storage.
#pragma once

#include "vocabulary/python.h"

#include "construction/road.h"

#include <span>
#include <vector>

namespace quarna {

/// The lengths along the first items of a nest. Empty unless all of them are exact lists or tuples, none without items,
/// down to a plain element of T, and unless the interpreter lets a walk go as deep.
template <class T>
std::vector<long> shapeOfPlainNest(PyObject* nest, bool coerceToLogical);

/// Writes the elements of a nest of that shape to `destination` in column-major order. Declines all that is not plain
/// or of another shape; fails only through a signal's handler. The caller holds the nest.
template <class T>
Road readPlainNest(PyObject* nest, std::span<long const> shape, bool coerceToLogical, T* destination);

}  // namespace quarna
