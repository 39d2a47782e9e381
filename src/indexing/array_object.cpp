// The memory of an array object, and its end.
#include "indexing/array_object.h"

namespace quarna {

PyObject* allocateArrayMemory(PyTypeObject* type, Py_ssize_t /*itemCount*/)
{
    return ArrayMemory::allocate(type);
}

void QCPyArray_Delete(PyObject* self)
{
    if (QCppPyArray* const array = getQCPyArrayFromPyObject(self)->array) {
        array->~QCppPyArray();
    }
    ArrayMemory::free(self);
}

}  // namespace quarna
