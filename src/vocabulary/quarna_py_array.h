// The Python object behind all eleven classes.
#pragma once

#include "vocabulary/python.h"

class QCppPyArray;

namespace quarna {

/// The record of every array object. It owns its array, which is null only until the object is complete.
struct QCPyArray {
    PyObject_HEAD QCppPyArray* array;
};

/// tp_dealloc of all eleven classes and of nothing else.
void QCPyArray_Delete(PyObject* self);

/// True for an array of any of the eleven classes.
inline bool QCPyArray_Check(PyObject* object)
{
    return object != nullptr && Py_TYPE(object) != nullptr &&
           Py_TYPE(object)->tp_dealloc == &QCPyArray_Delete;
}

/// The cast from an object to the record, without a test.
inline QCPyArray* getQCPyArrayFromPyObject(PyObject* object)
{
    return reinterpret_cast<QCPyArray*>(object);
}

}  // namespace quarna
