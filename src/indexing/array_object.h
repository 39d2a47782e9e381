// Array objects: where a QCppPyArray becomes a Python object, and where it ends.
#pragma once

#include "indexing/qcpp_py_array.h"
#include "vocabulary/errors.h"
#include "vocabulary/quarna_py_array.h"
#include "vocabulary/references.h"

#include <cstddef>
#include <new>
#include <utility>

namespace quarna {

/// The memory of an array object. The array that the record points to lies behind the record itself, so that a
/// subscript costs no second block. To Python, an object is as large as its record.
struct ArrayObject {
    QCPyArray record;
    alignas(QCppPyArray) std::byte storage[sizeof(QCppPyArray)];
};

/// tp_alloc of the eleven classes: an object whose array is still null; null with MemoryError set.
PyObject* allocateArrayMemory(PyTypeObject* type, Py_ssize_t itemCount);

/// An object of the class without its array; null with RuntimeError set.
inline Reference allocateArrayObject(SupportedArrayEnum arrayClass)
{
    PyTypeObject* const type = TypeObjectPointers[rowOf(arrayClass)];
    Reference object = Reference::steal(type->tp_alloc(type, 0));
    if (!object) {
        setError(PyExc_RuntimeError, allocationText);
    }
    return object;
}

template <class... Arguments>
PyObject* constructArrayObject(Reference object, Arguments&&... arguments)
{
    if (object) {
        auto* const memory = reinterpret_cast<ArrayObject*>(object.get());
        memory->record.array = new (memory->storage) QCppPyArray(std::forward<Arguments>(arguments)...);
    }
    return object.release();
}

/// A new full array; null with RuntimeError set without memory for the object.
inline PyObject* newArrayObject(QDArrayWrapperPtr wrapper, SupportedArrayEnum arrayClass, bool isComplex)
{
    return constructArrayObject(allocateArrayObject(arrayClass), std::move(wrapper), arrayClass, isComplex);
}

/// A new partial array: `parent` with one subscript more.
template <class Item>
PyObject* newArrayObject(QCppPyArray const& parent, Item const& item)
{
    return constructArrayObject(allocateArrayObject(parent.getSupportedArrayEnum()), parent, item);
}

}  // namespace quarna
