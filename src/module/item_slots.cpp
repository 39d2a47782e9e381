// Subscripts and len(): which form of subscript was used, and where it goes.
#include "assignment/assignment.h"
#include "indexing/array_object.h"
#include "indexing/subscript.h"
#include "module/slots.h"

#include <type_traits>

namespace quarna {

namespace {

constexpr char noIndexText[] = "index is not an integer or slice.";

bool isSlice(PyObject* index)
{
    return Py_TYPE(index) == &PySlice_Type;
}

// What is no integer.
PyObject* getViaSlice(PyObject* self, PyObject* index)
{
    QCppPyArray const* const array = requireArray(self);
    if (array == nullptr) {
        return nullptr;
    }
    if (!isSlice(index)) {
        return refuse(PyExc_RuntimeError, noIndexText);
    }
    if (!array->requireUsable()) {
        return nullptr;
    }
    SliceBounds bounds;
    // Reading them can run Python code, so the length is taken afterwards.
    long const length = unpackSlice(index, bounds) ? array->getLengthOfActiveDimension() : -1;
    if (length < 0) {
        return nullptr;
    }
    SliceIndexItem item = clippedSlice(bounds, length);
    return array->convertSliceAndSliceToSlice(item) ? newArrayObject(*array, item) : nullptr;
}

template <class T>
int setViaSlice(QCppPyArray const& array, PyObject* index, PyObject* value)
{
    if (!isSlice(index)) {
        return refuse(PyExc_RuntimeError, noIndexText);
    }
    SliceBounds bounds;
    // Reading them can run Python code, so the shape is looked at afterwards.
    if (!unpackSlice(index, bounds) || !array.requireUsable()) {
        return -1;
    }
    SliceIndexItem const item = clippedSlice(bounds, array.fullLengthOfActiveDimension());
    return withElementForm<T>(array.isComplex(), [&]<class Element>(std::type_identity<Element>) {
        return array.nextIntegerIsFinal()
                   ? setIndividualElementsFromFlatSeqOfMultipleIntegerIndices<Element>(array, item, value)
                   : setMultipleElementsFromNonFinalSliceIndex<Element>(array, item, value);
    });
}

}  // namespace

QCppPyArray* requireArray(PyObject* object)
{
    QCppPyArray* const array = object != nullptr ? getQCPyArrayFromPyObject(object)->array : nullptr;
    if (array == nullptr) {
        setError(PyExc_RuntimeError, notInitializedText);
    }
    return array;
}

Py_ssize_t QCPyArray_NumElemsInFirstDim(PyObject* self)
{
    QCppPyArray const* const array = requireArray(self);
    return array != nullptr ? array->getLengthOfActiveDimension() : -1;
}

template <class T>
PyObject* QCPyArray_GetItem(PyObject* self, Py_ssize_t index)
{
    QCppPyArray const* const array = requireArray(self);
    long const length = array != nullptr ? array->getLengthOfActiveDimension() : -1;
    if (length < 0) {
        return nullptr;
    }
    IntegerIndexItem item{index};
    if (!item.normalizeAgainstLength(length)) {
        return refuseIndex(index);
    }
    if (!array->convertSliceAndIntegerToInteger(item)) {
        return nullptr;
    }
    if (!array->nextIntegerIsFinal()) {
        return newArrayObject(*array, item);
    }
    return withElementForm<T>(array->isComplex(), [&]<class Element>(std::type_identity<Element>) {
        return array->getNumericPyObject<Element>(item.m_index);
    });
}

template <class T>
PyObject* QCPyArray_GetViaIndex(PyObject* self, PyObject* index)
{
    long integer = 0;
    switch (getIntegerIndexFromIndexObject(index, integer)) {
    case SubscriptKind::Integer:
        return QCPyArray_GetItem<T>(self, integer);
    case SubscriptKind::Other:
        return getViaSlice(self, index);
    default:
        return nullptr;
    }
}

template <class T>
int QCPyArray_SetViaIndex(PyObject* self, PyObject* index, PyObject* value)
{
    QCppPyArray* const array = requireArray(self);
    if (array == nullptr) {
        return -1;
    }
    if (value == nullptr) {
        return refuse(PyExc_TypeError, "array elements cannot be deleted.");
    }
    if (!array->requireUsable()) {
        return -1;
    }
    long integer = 0;
    switch (getIntegerIndexFromIndexObject(index, integer)) {
    case SubscriptKind::Integer:
        return withElementForm<T>(array->isComplex(), [&]<class Element>(std::type_identity<Element>) {
            return setItemsFromFinalOrNonFinalIntegerIndex<Element>(
                *array, integer, array->fullLengthOfActiveDimension(), value);
        });
    case SubscriptKind::Other:
        return setViaSlice<T>(*array, index, value);
    default:
        return -1;
    }
}

#define QUARNA_CLASS(suffix, attribute, element, code)                       \
    template PyObject* QCPyArray_GetItem<element>(PyObject*, Py_ssize_t);    \
    template PyObject* QCPyArray_GetViaIndex<element>(PyObject*, PyObject*); \
    template int QCPyArray_SetViaIndex<element>(PyObject*, PyObject*, PyObject*);
#include "vocabulary/class_table.def"

}  // namespace quarna
