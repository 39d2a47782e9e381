// The class array.array of the standard library, taken at import.
#pragma once

#include "vocabulary/python.h"

namespace quarna::ArrayArray {

/// Set when the module has been imported, and kept until the process ends; null until then.
extern PyObject* s_arrayClass;

}  // namespace quarna::ArrayArray
