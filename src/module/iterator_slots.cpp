// iter() and next().
#include "module/slots.h"
#include "module/type_objects.h"
#include "vocabulary/errors.h"
#include "vocabulary/references.h"

namespace quarna {

PyObject* QCPyArray_GetIter(PyObject* self)
{
    QCppPyArray const* const array = requireArray(self);
    if (array == nullptr || !array->requireUsable()) {
        return nullptr;
    }
    Reference object = Reference::steal(QCPyIter_Type.tp_alloc(&QCPyIter_Type, 0));
    if (!object) {
        setError(PyExc_RuntimeError, allocationText);
        return nullptr;
    }
    reinterpret_cast<QCPyIter*>(object.get())->iterator = new QCppPyIter(*array);
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
    delete reinterpret_cast<QCPyIter*>(self)->iterator;
    PyObject_Free(self);
}

}  // namespace quarna
