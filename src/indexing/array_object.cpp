// The end of an array object.
#include "indexing/array_object.h"

void QCPyArray_Delete(PyObject* self)
{
    if (QCppPyArray* const array = getQCPyArrayFromPyObject(self)->array) {
        array->~QCppPyArray();
    }
    PyObject_Free(self);
}
