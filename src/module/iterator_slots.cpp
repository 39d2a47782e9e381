// iter() and next().
#include "indexing/object_memory.h"
#include "module/slots.h"
#include "module/type_objects.h"
#include "vocabulary/errors.h"
#include "vocabulary/references.h"

#include <new>

namespace quarna {

namespace {

using IteratorMemory = ObjectMemory<QCPyIter, QCppPyIter>;

}  // namespace

PyObject* QCPyIter_Alloc(PyTypeObject* type, Py_ssize_t /*itemCount*/)
{
    return IteratorMemory::allocate(type);
}

PyObject* QCPyArray_GetIter(PyObject* self)
{
    QCppPyArray const* const array = requireArray(self);
    if (array == nullptr || !array->requireUsable()) {
        return nullptr;
    }
    Reference object = Reference::steal(IteratorMemory::allocate(&QCPyIter_Type));
    if (!object) {
        return refuse(PyExc_RuntimeError, allocationText);
    }
    reinterpret_cast<QCPyIter*>(object.get())->iterator =
        new (IteratorMemory::nativeMemory(object.get())) QCppPyIter(*array);
    return object.release();
}

PyObject* QCPyIter_GetIter(PyObject* self)
{
    return Reference::borrow(self).release();
}

PyObject* QCPyIter_GetIterNext(PyObject* self)
{
    return reinterpret_cast<QCPyIter*>(self)->iterator->increment();
}

void QCPyIter_Delete(PyObject* self)
{
    if (QCppPyIter* const iterator = reinterpret_cast<QCPyIter*>(self)->iterator) {
        iterator->~QCppPyIter();
    }
    IteratorMemory::free(self);
}

}  // namespace quarna
