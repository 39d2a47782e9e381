// The class array.array of the standard library.
#include "vocabulary/array_class.h"

PyObject* ArrayArray::s_arrayClass = nullptr;
