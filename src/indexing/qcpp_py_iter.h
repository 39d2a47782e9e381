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
    using MakeNumber = PyObject* (*)(QCppPyArray const& array, long index);
    static MakeNumber numberMaker(QCppPyArray const& array);

    QCppPyArray m_array;
    unsigned long m_reshapes;
    SliceIndexItem m_range;
    long m_position = 0;
    MakeNumber m_makeNumber;  // null: each step yields a partial array
};

}  // namespace quarna
