// Iteration over the active dimension of an array.
#include "indexing/qcpp_py_iter.h"

#include "data/element_dispatch.h"
#include "indexing/array_object.h"

#include <algorithm>
#include <type_traits>

namespace quarna {

namespace {

SliceIndexItem rangeOf(QCppPyArray const& array)
{
    if (array.holdsSlice()) {
        return array.heldSlice();
    }
    long const length = array.fullLengthOfActiveDimension();
    return {0, length, 1, length, true};
}

}  // namespace

QCppPyIter::QCppPyIter(QCppPyArray const& array)
    : m_source(QCppPyArray::forIteration(array)), m_makeItem(itemMaker(array))
{
    auto const range = rangeOf(array);
    m_index = range.m_start;
    m_step = range.m_step;
    m_left = range.m_slice_len;
}

template <class T>
PyObject* QCppPyIter::makeNumberHere(QCppPyIter const& iteration)
{
    // The elements of a row lie in a cache line each.
    constexpr long ahead = 8;
    QCppPyArray const& source = iteration.m_source;
    long const later = iteration.m_index + std::min(ahead, iteration.m_left - 1) * iteration.m_step;
    __builtin_prefetch(source.addressOf(later));
    return source.getNumericPyObject<T>(iteration.m_index);
}

PyObject* QCppPyIter::makePartHere(QCppPyIter const& iteration)
{
    return newArrayObject(iteration.m_source, IntegerIndexItem{iteration.m_index});
}

QCppPyIter::MakeItem QCppPyIter::itemMaker(QCppPyArray const& array)
{
    if (!array.nextIntegerIsFinal()) {
        return &makePartHere;
    }
    return data::visitElementType(array.getQDAWrapper()->type(), []<class T>(std::type_identity<T>) {
        return MakeItem{&makeNumberHere<T>};
    });
}

PyObject* QCppPyIter::increment()
{
    if (m_left == 0) {
        PyErr_SetNone(PyExc_StopIteration);
        return nullptr;
    }
    PyObject* const next = m_source.requireUnreshaped() ? m_makeItem(*this) : nullptr;
    if (next != nullptr && --m_left > 0) {
        m_index += m_step;
    }
    return next;
}

}  // namespace quarna
