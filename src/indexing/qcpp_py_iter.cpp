// Iteration over the active dimension of an array.
#include "indexing/qcpp_py_iter.h"

#include "data/element_dispatch.h"
#include "indexing/array_object.h"

#include <type_traits>

namespace quarna {

namespace {

SliceIndexItem rangeOf(QCppPyArray const& array)
{
    if (auto const slice = array.heldSlice()) {
        return *slice;
    }
    long const length = array.fullLengthOfActiveDimension();
    return {0, length, 1, length, true};
}

}  // namespace

QCppPyIter::QCppPyIter(QCppPyArray const& array)
    : m_array(QCppPyArray::forIteration(array)), m_reshapes(array.getQDAWrapper()->reshapeCount()),
      m_range(rangeOf(array)), m_makeNumber(array.nextIntegerIsFinal() ? numberMaker(array) : nullptr)
{}

QCppPyIter::MakeNumber QCppPyIter::numberMaker(QCppPyArray const& array)
{
    return data::visitElementType(
        array.getQDAWrapper()->type(), []<class T>(std::type_identity<T>) -> MakeNumber {
            return [](QCppPyArray const& source, long index) { return source.getNumericPyObject<T>(index); };
        });
}

PyObject* QCppPyIter::increment()
{
    if (m_position >= m_range.m_slice_len) {
        PyErr_SetNone(PyExc_StopIteration);
        return nullptr;
    }
    if (!m_array.requireReshapeCount(m_reshapes)) {
        return nullptr;
    }
    long const index = indexWithinSlice(m_range, m_position);
    PyObject* const next = m_makeNumber != nullptr ? m_makeNumber(m_array, index)
                                                   : newArrayObject(m_array, IntegerIndexItem{index});
    m_position += next != nullptr ? 1 : 0;
    return next;
}

}  // namespace quarna
