// The class array.array of the standard library, taken at import.
#pragma once

#include "vocabulary/python.h"

namespace ArrayArray {
/// Set once the module is imported, and kept until the process ends.
extern PyObject* s_arrayClass;
}  // namespace ArrayArray
