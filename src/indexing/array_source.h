// The elements of an array object as the source of another array.
#pragma once

#include "vocabulary/python.h"

#include "data/element_source.h"

#include <optional>

namespace quarna {

/// What an array of any class selects; empty, without an exception, for another object or a stale array.
std::optional<ElementSource> elementsOfArray(PyObject* object);

}  // namespace quarna
