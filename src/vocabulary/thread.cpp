// What a thread needs to run our code.
#include "vocabulary/thread.h"

#include <cxxabi.h>

#include <cstdlib>

namespace quarna {

bool threadHasPython()
{
#if PY_VERSION_HEX >= 0x030D0000
    return PyThreadState_GetUnchecked() != nullptr;
#elif PY_VERSION_HEX >= 0x030C0000
    return _PyThreadState_UncheckedGet() != nullptr;
#else
    if (!_Py_IsFinalizing()) {
        return true;
    }
    // Up to CPython 3.11 this is the state of whatever thread runs, not of the one that asks.
    PyThreadState const* const running = _PyThreadState_UncheckedGet();
    return running != nullptr && running->thread_id == PyThread_get_thread_ident();
#endif
}

QUARNA_THREAD_LOCAL bool detail::threadIsPrepared = false;

bool detail::prepareThreadNow()
{
    // The runtime asks for some 32 bytes and takes no refusal, so it is not let near an exhausted heap.
    void* volatile probe = std::malloc(64);
    if (probe == nullptr) {
        PyErr_NoMemory();
        return false;
    }
    std::free(probe);
    [[maybe_unused]] void* volatile const storage = abi::__cxa_get_globals();
    threadIsPrepared = true;
    return true;
}

}  // namespace quarna
