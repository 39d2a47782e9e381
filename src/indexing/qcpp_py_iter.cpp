// Iteration over the active dimension of an array.
#include "indexing/qcpp_py_iter.h"

#include "data/element_dispatch.h"
#include "indexing/array_object.h"

#include <type_traits>

namespace {

SliceIndexItem rangeOf(QCppPyArray const& array)
{
    if (SliceIndexItem const* const slice = array.heldSlice()) {
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
    return quarna::data::visitElementType(
        array.getQDAWrapper()->array().getType(), []<class T>(std::type_identity<T>) -> MakeNumber {
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
    long const index = quarna::indexWithinSlice(m_range, m_position);
    PyObject* const next = m_makeNumber != nullptr ? m_makeNumber(m_array, index)
                                                   : quarna::newArrayObject(m_array, IntegerIndexItem{index});
    m_position += next != nullptr ? 1 : 0;
    return next;
}
