// Array objects: where a QCppPyArray becomes a Python object, and where it ends.
#pragma once

#include "indexing/object_memory.h"
#include "indexing/qcpp_py_array.h"
#include "vocabulary/errors.h"
#include "vocabulary/quarna_py_array.h"
#include "vocabulary/references.h"

#include <new>
#include <utility>

namespace quarna {

using ArrayMemory = ObjectMemory<QCPyArray, QCppPyArray>;

/// tp_alloc of the eleven classes: an object whose array is still null; null with MemoryError set.
PyObject* allocateArrayMemory(PyTypeObject* type, Py_ssize_t itemCount);

/// A new object around a new array, made of the arguments; null with RuntimeError set without memory for the object.
template <class... Arguments>
PyObject* constructArrayObject(SupportedArrayEnum arrayClass, Arguments&&... arguments)
{
    Reference object = Reference::steal(ArrayMemory::allocate(TypeObjectPointers[rowOf(arrayClass)]));
    if (!object) {
        return refuse(PyExc_RuntimeError, allocationText);
    }
    getQCPyArrayFromPyObject(object.get())->array =
        new (ArrayMemory::nativeMemory(object.get())) QCppPyArray(std::forward<Arguments>(arguments)...);
    return object.release();
}

/// A new full array.
inline PyObject* newArrayObject(QDArrayWrapperPtr wrapper, SupportedArrayEnum arrayClass, bool isComplex)
{
    return constructArrayObject(arrayClass, std::move(wrapper), arrayClass, isComplex);
}

/// A new partial array: `parent` with one subscript more.
template <class Item>
PyObject* newArrayObject(QCppPyArray const& parent, Item const& item)
{
    return constructArrayObject(parent.getSupportedArrayEnum(), parent, item);
}

}  // namespace quarna
