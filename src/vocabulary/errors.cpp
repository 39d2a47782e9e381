// Setting Python exceptions.
#include "vocabulary/errors.h"

PyObject* QCPyError::shapeErr = nullptr;
PyObject* QCPyError::sizeErr = nullptr;

void setError(PyObject* exceptionClass, const char* text)
{
    PyErr_SetString(exceptionClass, text);
}

void quarna::setIndexError(long index)
{
    setComposedError(PyExc_IndexError, "index has an invalid value: ", index);
}
