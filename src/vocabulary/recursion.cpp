// Recursion over Python values and dimensions.
#include "vocabulary/recursion.h"

#include "vocabulary/thread.h"

namespace quarna {

namespace {

// From CPython 3.12 on, its own count lets C code go ten times as deep as the limit that users know and set,
// which is too deep for the stack of a thread.
QUARNA_THREAD_LOCAL int levels = 0;

bool enter(const char* where)
{
    if (levels >= Py_GetRecursionLimit()) {
        PyErr_Format(PyExc_RecursionError, "maximum recursion depth exceeded%s", where);
        return false;
    }
    if (Py_EnterRecursiveCall(where) != 0) {
        return false;
    }
    ++levels;
    return true;
}

}  // namespace

RecursionLevel::RecursionLevel(const char* where) : m_entered(enter(where)) {}

RecursionLevel::~RecursionLevel()
{
    if (m_entered) {
        --levels;
        if (threadHasPython()) {
            Py_LeaveRecursiveCall();
        }
    }
}

}  // namespace quarna
