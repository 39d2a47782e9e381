// The core of partial arrays: what an array restricts, and what it selects.
#include "indexing/qcpp_py_array.h"

#include "vocabulary/errors.h"

#include <utility>

using namespace quarna;

QCppPyArray::QCppPyArray(QDArrayWrapperPtr wrapper, SupportedArrayEnum arrayClass, bool isComplex)
    : m_wrapper(std::move(wrapper)), m_reshapes(m_wrapper->reshapeCount()), m_supportedArrayEnum(arrayClass),
      m_isComplex(isComplex)
{}

QCppPyArray::QCppPyArray(QCppPyArray const& other)
    : m_wrapper(other.m_wrapper), m_reshapes(other.m_reshapes), m_indices(other.m_indices),
      m_supportedArrayEnum(other.m_supportedArrayEnum), m_isComplex(other.m_isComplex)
{}

// The items of a full array are tried against the shape of now, those of a partial array against that of their time.
QCppPyArray::QCppPyArray(QCppPyArray const& parent, IntegerIndexItem const& item)
    : m_wrapper(parent.m_wrapper),
      m_reshapes(parent.indicesAreEmpty() ? m_wrapper->reshapeCount() : parent.m_reshapes),
      m_indices(parent.m_indices, item), m_supportedArrayEnum(parent.m_supportedArrayEnum),
      m_isComplex(parent.m_isComplex)
{}

QCppPyArray::QCppPyArray(QCppPyArray const& parent, SliceIndexItem const& item)
    : m_wrapper(parent.m_wrapper),
      m_reshapes(parent.indicesAreEmpty() ? m_wrapper->reshapeCount() : parent.m_reshapes),
      m_indices(parent.m_indices, item), m_supportedArrayEnum(parent.m_supportedArrayEnum),
      m_isComplex(parent.m_isComplex)
{}

QCppPyArray QCppPyArray::forIteration(QCppPyArray const& other)
{
    QCppPyArray source(other);
    source.m_indices.markNotNormalized();
    return source;
}

bool QCppPyArray::requireReshapeCount(unsigned long reshapes) const
{
    if (m_wrapper->reshapeCount() != reshapes) {
        return refuse(PyExc_RuntimeError, "the array was reshaped since this access to it began.");
    }
    return true;
}

bool QCppPyArray::requireUsable() const
{
    if (isUsable()) {
        return true;
    }
    if (isCurrent()) {
        // Only a foreign array without dimensions comes here.
        return refuse(PyExc_RuntimeError, "too many indices.");
    }
    return requireReshapeCount(m_reshapes);
}

long QCppPyArray::fullLengthOfActiveDimension() const
{
    return m_wrapper->shape()[activeDimension()];
}

long QCppPyArray::getLengthOfActiveDimension() const
{
    if (!requireUsable()) {
        return -1;
    }
    auto const slice = heldSlice();
    return slice ? slice->m_slice_len : fullLengthOfActiveDimension();
}

bool QCppPyArray::convertSliceAndIntegerToInteger(IntegerIndexItem& item) const
{
    auto const slice = heldSlice();
    if (!slice) {
        return true;
    }
    if (item.m_index >= slice->m_slice_len) {
        return refuse(PyExc_RuntimeError, "unable to index into slice.");
    }
    item = {indexWithinSlice(*slice, item.m_index)};
    return true;
}

bool QCppPyArray::convertSliceAndSliceToSlice(SliceIndexItem& item) const
{
    auto const slice = heldSlice();
    if (!slice) {
        return true;
    }
    if (slice->m_step < 0 || item.m_step < 0) {
        return refuse(PyExc_ValueError, "successive slices must both have a positive step size.");
    }
    item = intersection(*slice, item);
    return true;
}

long QCppPyArray::elementStride(std::size_t dimension) const
{
    // Beside a length of 0, an index times a stride may be beyond all numbers.
    return m_wrapper->hasElements()
               ? m_wrapper->bytewiseStrides()[dimension] / m_wrapper->getElementSizeInBytes()
               : 0;
}

long QCppPyArray::offsetOfIntegers() const
{
    long offset = 0;
    for (std::size_t place = 0; place < m_indices.integerCount(); ++place) {
        offset += integerAt(place) * elementStride(place);
    }
    return offset;
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
    if (auto const slice = heldSlice()) {
        return selectionWith(*slice);
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
