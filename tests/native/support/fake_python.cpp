// The symbols of Python that the layers below the module are linked with; only setting an error is ever reached.
#include "vocabulary/python.h"

extern "C" {

PyObject* PyExc_IndexError = nullptr;
PyObject* PyExc_RuntimeError = nullptr;

void PyErr_SetString(PyObject*, const char*) {}
}
