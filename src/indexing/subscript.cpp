// Reading subscripts from Python.
#include "indexing/subscript.h"

#include "vocabulary/errors.h"

namespace quarna {

SubscriptKind readRareIndex(PyObject* index, long& integer)
{
    if (!pyObjectIsLong(index)) {
        return SubscriptKind::Other;
    }
    integer = PyLong_AsSsize_t(index);
    return integer == -1 && PyErr_Occurred() != nullptr ? SubscriptKind::Refused : SubscriptKind::Integer;
}

bool unpackSlice(PyObject* slice, SliceBounds& bounds)
{
    bool const unpacked = PySlice_Unpack(slice, &bounds.start, &bounds.stop, &bounds.step) == 0;
    if (bounds.step == 0) {
        // CPython reads the step first, so a step of 0 here means that it was what could not be read.
        setError(PyExc_ValueError, "slice step cannot be zero.");
    }
    return unpacked;
}

SliceIndexItem clippedSlice(SliceBounds bounds, long length)
{
    Py_ssize_t const count = PySlice_AdjustIndices(length, &bounds.start, &bounds.stop, bounds.step);
    return makeSliceItem(bounds.start, bounds.stop, bounds.step, count);
}

}  // namespace quarna
