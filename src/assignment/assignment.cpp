// Assignment through subscripts.
#include "assignment/assignment.h"

#include "assignment/single_element.h"
#include "assignment/storing.h"
#include "construction/nest_reader.h"
#include "elements/strided_view.h"
#include "vocabulary/errors.h"
#include "wrapper/qd_array_wrapper.h"

#include <algorithm>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <span>
#include <vector>

namespace quarna {

namespace {

template <class T>
bool readRightSide(NestReader<T>& reader, QCppPyArray const& array, PyObject* value)
{
    unsigned long const reshapes = array.getQDAWrapper()->reshapeCount();
    return reader.read(value, false) && array.requireReshapeCount(reshapes);
}

/// An integer with dimensions behind it, or a slice of the last dimension: both sides nest alike.
template <class T, class Item>
int setAlikeNest(QCppPyArray const& array, Item const& item, PyObject* value)
{
    if (Road const road = copyArray<T>(array, array.selectionWith(item), value); road != Road::Declined) {
        return road == Road::Taken ? 0 : -1;
    }
    NestReader<T> reader;
    if (!readRightSide(reader, array, value)) {
        return -1;
    }
    StridedView const target = array.selectionWith(item);
    if (!haveSameShape(target.dimensions, reader.dims())) {
        return refuse(
            PyExc_ValueError,
            "unable to perform assignment because the left and right sides have a different shape.");
    }
    return store(array, target, reader) ? 0 : -1;
}

Refused refuseEmptySlice()
{
    return refuse(PyExc_ValueError, "slice is empty, but number of elements assigned is greater than zero.");
}

}  // namespace

template <class T>
int setItemsFromFinalOrNonFinalIntegerIndex(QCppPyArray const& array, long index, long length,
                                            PyObject* value)
{
    IntegerIndexItem item{index};
    if (!item.normalizeAgainstLength(length)) {
        return refuseIndex(index);
    }
    if (!array.convertSliceAndIntegerToInteger(item)) {
        return -1;
    }
    return array.nextIntegerIsFinal() ? setItemViaFinalIntegerIndex<T>(array, item.m_index, value)
                                      : setAlikeNest<T>(array, item, value);
}

template <class T>
int setIndividualElementsFromFlatSeqOfMultipleIntegerIndices(QCppPyArray const& array,
                                                             SliceIndexItem const& item, PyObject* value)
{
    return setAlikeNest<T>(array, item, value);
}

template <class T>
int setMultipleElementsFromNonFinalSliceIndex(QCppPyArray const& array, SliceIndexItem item, PyObject* value)
{
    if (!array.holdsSlice()) {
        if (Road const road = copyArray<T>(array, array.selectionWith(item), value); road != Road::Declined) {
            return road == Road::Taken ? 0 : -1;
        }
    }
    NestReader<T> reader;
    if (!readRightSide(reader, array, value)) {
        return -1;
    }
    if (reader.elements().empty()) {
        return item.isEmpty() ? 0 : refuse(PyExc_ValueError, "slice is nonempty but values are empty.");
    }
    if (item.isEmpty()) {
        return refuseEmptySlice();
    }
    if (!array.convertSliceAndSliceToSlice(item)) {
        return -1;
    }
    if (item.isEmpty()) {
        return refuseEmptySlice();
    }
    StridedView const target = array.selectionWith(item);
    if (!store(array, target, reader)) {
        return -1;
    }
    if (target.count() != static_cast<long>(reader.elements().size())) {
        return refuse(PyExc_ValueError, "length of slice does not match number of elements.");
    }
    return 0;
}

#define QUARNA_ARRAY_TYPE(number, name, element)                                                        \
    template int setItemsFromFinalOrNonFinalIntegerIndex<element>(QCppPyArray const&, long, long,       \
                                                                  PyObject*);                           \
    template int setIndividualElementsFromFlatSeqOfMultipleIntegerIndices<element>(                     \
        QCppPyArray const&, SliceIndexItem const&, PyObject*);                                          \
    template int setMultipleElementsFromNonFinalSliceIndex<element>(QCppPyArray const&, SliceIndexItem, \
                                                                    PyObject*);
#include "data/array_types.def"

}  // namespace quarna
