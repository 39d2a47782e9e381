// The core of partial arrays: what an array restricts, and what it selects.
#include "indexing/qcpp_py_array.h"

#include "vocabulary/errors.h"

#include <cassert>
#include <cstddef>
#include <utility>
#include <variant>

QCppPyArray::QCppPyArray(quarna::data::Array&& array, SupportedArrayEnum arrayClass, bool isComplex,
                         bool columnMajor)
    : m_wrapper(std::make_shared<QDArrayWrapper>(std::move(array), columnMajor ? 'F' : 'C')),
      m_supportedArrayEnum(arrayClass), m_isComplex(isComplex), m_reshapes(m_wrapper->reshapeCount())
{}

QCppPyArray::QCppPyArray(QCppPyArray const& other)
    : m_wrapper(other.m_wrapper), m_supportedArrayEnum(other.m_supportedArrayEnum),
      m_isComplex(other.m_isComplex), m_indices(other.m_indices),
      m_numberOfIntegerIndicesSoFar(other.m_numberOfIntegerIndicesSoFar),
      m_reshapes(other.indicesAreEmpty() ? m_wrapper->reshapeCount() : other.m_reshapes)
{}

QCppPyArray::QCppPyArray(QCppPyArray const& parent, IndexItem const& item) : QCppPyArray(parent)
{
    if (sliceInFinalPreexistingPosition()) {
        m_indices.pop_back();
    }
    m_indices.push_back(item);
    m_numberOfIntegerIndicesSoFar += std::holds_alternative<IntegerIndexItem>(item) ? 1 : 0;
    assert(m_numberOfIntegerIndicesSoFar <= getNumberOfDimensions() - 1);
}

QCppPyArray QCppPyArray::forIteration(QCppPyArray const& other)
{
    QCppPyArray source(other);
    for (IndexItem& item : source.m_indices) {
        if (auto* const integer = std::get_if<IntegerIndexItem>(&item)) {
            integer->m_isNormalized = false;
        }
    }
    return source;
}

SliceIndexItem const* QCppPyArray::heldSlice() const
{
    return m_indices.empty() ? nullptr : std::get_if<SliceIndexItem>(&m_indices.back());
}

bool QCppPyArray::requireReshapeCount(unsigned long reshapes) const
{
    if (m_wrapper->reshapeCount() == reshapes) {
        return true;
    }
    setError(PyExc_RuntimeError, "the array was reshaped since this access to it began.");
    return false;
}

bool QCppPyArray::requireUsable() const
{
    if (isUsable()) {
        return true;
    }
    if (isCurrent()) {
        // Only a foreign array without dimensions comes here.
        setError(PyExc_RuntimeError, "too many indices.");
        return false;
    }
    return requireReshapeCount(m_reshapes);
}

long QCppPyArray::fullLengthOfActiveDimension() const
{
    return m_wrapper->shape()[static_cast<std::size_t>(m_numberOfIntegerIndicesSoFar)];
}

long QCppPyArray::getLengthOfActiveDimension() const
{
    if (!requireUsable()) {
        return -1;
    }
    SliceIndexItem const* const slice = heldSlice();
    return slice != nullptr ? slice->m_slice_len : fullLengthOfActiveDimension();
}

bool QCppPyArray::convertSliceAndIntegerToInteger(IntegerIndexItem& item) const
{
    SliceIndexItem const* const slice = heldSlice();
    if (slice == nullptr) {
        return true;
    }
    if (item.m_index >= slice->m_slice_len) {
        setError(PyExc_RuntimeError, "unable to index into slice.");
        return false;
    }
    item = {quarna::indexWithinSlice(*slice, item.m_index)};
    return true;
}

bool QCppPyArray::convertSliceAndSliceToSlice(SliceIndexItem& item) const
{
    SliceIndexItem const* const slice = heldSlice();
    if (slice == nullptr) {
        return true;
    }
    if (slice->m_step < 0 || item.m_step < 0) {
        setError(PyExc_ValueError, "successive slices must both have a positive step size.");
        return false;
    }
    item = quarna::intersection(*slice, item);
    return true;
}

long QCppPyArray::elementStride(std::size_t dimension) const
{
    return m_wrapper->bytewiseStrides()[dimension] / m_wrapper->getElementSizeInBytes();
}

long QCppPyArray::offsetOfIntegers() const
{
    long offset = 0;
    for (std::size_t place = 0; place < static_cast<std::size_t>(m_numberOfIntegerIndicesSoFar); ++place) {
        offset += integerAt(place) * elementStride(place);
    }
    return offset;
}

void QCppPyArray::appendOpenDimensions(quarna::StridedView& view) const
{
    auto const& shape = m_wrapper->shape();
    auto const taken = static_cast<std::size_t>(m_numberOfIntegerIndicesSoFar) + 1;
    for (std::size_t dimension = taken; dimension < shape.size(); ++dimension) {
        view.dimensions.push_back({shape[dimension], elementStride(dimension)});
    }
}

quarna::StridedView QCppPyArray::selection() const
{
    if (SliceIndexItem const* const slice = heldSlice()) {
        return selectionWith(*slice);
    }
    quarna::StridedView view{offsetOfIntegers(), {}};
    auto const active = static_cast<std::size_t>(m_numberOfIntegerIndicesSoFar);
    view.dimensions.push_back({fullLengthOfActiveDimension(), elementStride(active)});
    appendOpenDimensions(view);
    return view;
}

quarna::StridedView QCppPyArray::selectionWith(IndexItem const& item) const
{
    quarna::StridedView view{offsetOfIntegers(), {}};
    long const stride = elementStride(static_cast<std::size_t>(m_numberOfIntegerIndicesSoFar));
    if (auto const* const slice = std::get_if<SliceIndexItem>(&item)) {
        view.offset += slice->m_start * stride;
        // The step of a single element leads nowhere and may be any.
        view.dimensions.push_back({slice->m_slice_len, slice->m_slice_len > 1 ? slice->m_step * stride : 0});
    } else {
        view.offset += std::get<IntegerIndexItem>(item).m_index * stride;
    }
    appendOpenDimensions(view);
    return view;
}
