// The class array.array of the standard library.
#include "vocabulary/array_array.h"

PyObject* quarna::ArrayArray::s_arrayClass = nullptr;
