// Iteration over the active dimension of an array.
#pragma once

#include "indexing/qcpp_py_array.h"

namespace quarna {

class QCppPyIter {
public:
    /// The array is usable. It may die before its iterator does, which shares the wrapper.
    explicit QCppPyIter(QCppPyArray const& array);

    /// The next number or partial array as a new reference; null with StopIteration set at the end and
    /// afterwards, or with RuntimeError set if the array was reshaped.
    PyObject* increment();

private:
    using MakeItem = PyObject* (*)(QCppPyIter const& iteration);

    template <class T>
    static PyObject* makeNumberHere(QCppPyIter const& iteration);
    static PyObject* makePartHere(QCppPyIter const& iteration);
    static MakeItem itemMaker(QCppPyArray const& array);

    QCppPyArray m_source;
    MakeItem m_makeItem;
    long m_index;
    long m_step;
    long m_left;
};

}  // namespace quarna
