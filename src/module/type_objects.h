// The type objects of the eleven array classes and of their iterator.
#pragma once

#include "vocabulary/python.h"

#include "vocabulary/class_table.h"

namespace quarna {

extern PyTypeObject QCPyIter_Type;

#define QUARNA_CLASS(suffix, attribute, element, code) extern PyTypeObject QCPyArray_Type_##suffix;
#include "vocabulary/class_table.def"

}  // namespace quarna
