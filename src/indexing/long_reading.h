// Reading an array for long, with a look for signals now and then.
#pragma once

#include "indexing/qcpp_py_array.h"
#include "vocabulary/signals.h"

#include <algorithm>

namespace quarna {

/// The elements of a usable array during work that lets Python code run in between. That code may write to the array,
/// which can move its elements, and reshape it, which ends the work.
class LongReading {
public:
    explicit LongReading(QCppPyArray const& array)
        : m_array(array), m_reshapes(array.getQDAWrapper()->reshapeCount())
    {}

    /// Where the elements lie until Python code runs.
    void const* block() const { return m_array.getQDAWrapper()->buf(); }

    /// False with an exception set if the array was reshaped since the work began.
    bool isSteady() const { return m_array.requireReshapeCount(m_reshapes); }

    /// So many elements were read. Python code may have run then; false with an exception set if the work is to end.
    bool passed(long elements) { return m_signals.passed(elements) && isSteady(); }

    /// How many of so many elements to read before that is told.
    long portionOf(long elements) const { return std::min(elements, m_signals.left()); }

private:
    QCppPyArray const& m_array;
    unsigned long m_reshapes;
    SignalWatch m_signals;
};

}  // namespace quarna
