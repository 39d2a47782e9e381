// What Python calls on arrays and iterators. All functions go through `guarded` but those that cannot fail:
// tp_alloc and tp_dealloc, and the release of a buffer.
#pragma once

#include "vocabulary/python.h"

#include "indexing/qcpp_py_iter.h"
#include "vocabulary/quarna_py_array.h"

namespace quarna {

/// The record of an iterator. It owns its iteration, which is null only until the object is complete.
struct QCPyIter {
    PyObject_HEAD QCppPyIter* iterator;
};

/// The array of an object; null with RuntimeError set if it has none.
QCppPyArray* requireArray(PyObject* object);

// T is the real element of the class; the complex flag of an array selects its complex form at run time.
template <class T>
PyObject* QCPyArray_New(PyTypeObject* type, PyObject* args, PyObject* kwds);
template <class T>
PyObject* QCPyArray_GetItem(PyObject* self, Py_ssize_t index);
template <class T>
PyObject* QCPyArray_GetViaIndex(PyObject* self, PyObject* index);
template <class T>
int QCPyArray_SetViaIndex(PyObject* self, PyObject* index, PyObject* value);
template <class T>
PyObject* QCPyArray_RichCompare(PyObject* self, PyObject* other, int operation);
template <class T>
PyObject* QCPyArray_GetStr(PyObject* self);
template <class T>
PyObject* QCPyArray_GetRepr(PyObject* self);

Py_ssize_t QCPyArray_NumElemsInFirstDim(PyObject* self);
PyObject* QCPyArray_GetIter(PyObject* self);

/// tp_alloc: an iterator whose iteration is still null; null with MemoryError set.
PyObject* QCPyIter_Alloc(PyTypeObject* type, Py_ssize_t itemCount);
PyObject* QCPyIter_GetIter(PyObject* self);
PyObject* QCPyIter_GetIterNext(PyObject* self);
void QCPyIter_Delete(PyObject* self);

// Guards itself, so that a view has no owner if the request fails.
int QCPyArray_GetBuffer(PyObject* self, Py_buffer* view, int flags);
void QCPyArray_ReleaseBuffer(PyObject* self, Py_buffer* view) noexcept;

// The attributes and methods of all classes, each with an end marker.
extern PyGetSetDef QCPyArray_GetSetMethods[];
extern PyMethodDef QCPyArray_Methods[];

PyObject* QCPyArray_Reshape(PyObject* self, PyObject* args, PyObject* kwds);
PyObject* QCPyArray_Clone(PyObject* self, PyObject* unused);
PyObject* QCPyArray_Real(PyObject* self, PyObject* unused);
PyObject* QCPyArray_Imag(PyObject* self, PyObject* unused);
PyObject* QCPyArray_Noncomplex(PyObject* self, PyObject* unused);
PyObject* QCPyArray_ToArrayArray(PyObject* self, PyObject* unused);
PyObject* QCPyArray_Reduce(PyObject* self, PyObject* unused);

}  // namespace quarna
