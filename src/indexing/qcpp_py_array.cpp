// The core of partial arrays: what an array restricts, and what it selects.
#include "indexing/qcpp_py_array.h"

#include "vocabulary/errors.h"

#include <utility>

using namespace quarna;

QCppPyArray::QCppPyArray(QDArrayWrapperPtr wrapper, SupportedArrayEnum arrayClass, bool isComplex)
    : m_wrapper(std::move(wrapper)), m_reshapes(m_wrapper->reshapeCount()), m_supportedArrayEnum(arrayClass),
      m_isComplex(isComplex)
{}

// Whatever the items of a family's array are tried against, it is the shape of now.
template <class... Items>
QCppPyArray::QCppPyArray(QCppPyArray const& family, long byteOffset, Items const&... items)
    : m_wrapper(family.m_wrapper), m_reshapes(m_wrapper->reshapeCount()), m_byteOffset(byteOffset),
      m_indices(items...), m_supportedArrayEnum(family.m_supportedArrayEnum), m_isComplex(family.m_isComplex)
{}

QCppPyArray::QCppPyArray(QCppPyArray const& parent, IntegerIndexItem const& item)
    : QCppPyArray(parent, parent.m_byteOffset + parent.bytesTo(item.m_index), parent.m_indices, item)
{}

QCppPyArray::QCppPyArray(QCppPyArray const& parent, SliceIndexItem const& item)
    : QCppPyArray(parent, parent.m_byteOffset, parent.m_indices, item)
{}

QCppPyArray QCppPyArray::forIteration(QCppPyArray const& other)
{
    return {other, other.m_byteOffset, other.m_indices.integersOnly()};
}

bool QCppPyArray::refuseUse() const
{
    if (isCurrent()) {
        // Only a foreign array without dimensions comes here.
        return refuse(PyExc_RuntimeError, "too many indices.");
    }
    return requireReshapeCount(m_reshapes);
}

bool QCppPyArray::requireReshapeCount(unsigned long reshapes) const
{
    if (m_wrapper->reshapeCount() != reshapes) {
        return refuse(PyExc_RuntimeError, "the array was reshaped since this access to it began.");
    }
    return true;
}

bool QCppPyArray::takePlaceOfSlice(IntegerIndexItem& item) const
{
    SliceIndexItem const slice = heldSlice();
    if (item.m_index >= slice.m_slice_len) {
        return refuse(PyExc_RuntimeError, "unable to index into slice.");
    }
    item = {indexWithinSlice(slice, item.m_index)};
    return true;
}

bool QCppPyArray::convertSliceAndSliceToSlice(SliceIndexItem& item) const
{
    if (!holdsSlice()) {
        return true;
    }
    SliceIndexItem const slice = heldSlice();
    if (slice.m_step < 0 || item.m_step < 0) {
        return refuse(PyExc_ValueError, "successive slices must both have a positive step size.");
    }
    item = intersection(slice, item);
    return true;
}

// Beside a length of 0, an index times a stride may be beyond all numbers.
long QCppPyArray::bytesTo(long index) const
{
    return m_wrapper->hasElements() ? index * m_wrapper->bytewiseStrides()[activeDimension()] : 0;
}

long QCppPyArray::elementStride(std::size_t dimension) const
{
    return m_wrapper->hasElements()
               ? m_wrapper->bytewiseStrides()[dimension] / m_wrapper->getElementSizeInBytes()
               : 0;
}

long QCppPyArray::offsetOfIntegers() const
{
    return m_byteOffset / m_wrapper->getElementSizeInBytes();
}

void QCppPyArray::appendOpenDimensions(StridedView& view) const
{
    auto const shape = m_wrapper->shape();
    for (std::size_t dimension = activeDimension() + 1; dimension < shape.size(); ++dimension) {
        view.dimensions.push_back({shape[dimension], elementStride(dimension)});
    }
}

StridedView QCppPyArray::selection() const
{
    if (holdsSlice()) {
        return selectionWith(heldSlice());
    }
    StridedView view{offsetOfIntegers(), {}};
    view.dimensions.push_back({fullLengthOfActiveDimension(), elementStride(activeDimension())});
    appendOpenDimensions(view);
    return view;
}

StridedView QCppPyArray::selectionWith(SliceIndexItem const& item) const
{
    long const stride = elementStride(activeDimension());
    StridedView view{offsetOfIntegers() + item.m_start * stride, {}};
    // The step of a single element leads nowhere and may be any.
    view.dimensions.push_back({item.m_slice_len, item.m_slice_len > 1 ? item.m_step * stride : 0});
    appendOpenDimensions(view);
    return view;
}

StridedView QCppPyArray::selectionWith(IntegerIndexItem const& item) const
{
    StridedView view{offsetOfIntegers() + item.m_index * elementStride(activeDimension()), {}};
    appendOpenDimensions(view);
    return view;
}
