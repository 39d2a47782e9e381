// The memory of an array object, and its end.
#include "indexing/array_object.h"

namespace quarna {

PyObject* allocateArrayMemory(PyTypeObject* type, Py_ssize_t /*itemCount*/)
{
    auto* const memory = static_cast<ArrayObject*>(PyObject_Malloc(sizeof(ArrayObject)));
    if (memory == nullptr) {
        return PyErr_NoMemory();
    }
    memory->record.array = nullptr;
    return PyObject_Init(reinterpret_cast<PyObject*>(memory), type);
}

void QCPyArray_Delete(PyObject* self)
{
    if (QCppPyArray* const array = getQCPyArrayFromPyObject(self)->array) {
        array->~QCppPyArray();
    }
    PyObject_Free(self);
}

}  // namespace quarna
