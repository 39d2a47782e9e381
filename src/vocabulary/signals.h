// Signals, so that long work in here answers Ctrl-C.
#pragma once

#include "vocabulary/python.h"

namespace quarna {

/// Lets handlers of signals run now and then during long work. A handler is Python code, which may reshape or write
/// to any array, grow any list: nobody relies over a look on what he saw before it.
class SignalWatch {
public:
    /// So many elements were worked on since the last call. False with an exception set if a handler raised one, as
    /// the one of Ctrl-C does.
    bool passed(long elements)
    {
        m_left -= elements;
        return m_left > 0 || look();
    }

    /// How many elements may be worked on until the next look, at least one.
    long left() const { return m_left; }

private:
    static constexpr long elementsBetweenLooks = 1L << 16;

    bool look()
    {
        m_left = elementsBetweenLooks;
        return PyErr_CheckSignals() == 0;
    }

    long m_left = elementsBetweenLooks;
};

}  // namespace quarna
