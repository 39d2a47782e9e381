// What a thread needs to run our code: its state in the interpreter, and storage for C++ exceptions.
#pragma once

#include "vocabulary/python.h"

namespace quarna {

/// Whether the calling thread, which came from Python, may still touch it. At its exit the interpreter ends the
/// daemon threads that wait for the GIL, up to CPython 3.13 by unwinding their stacks, and destructors run without
/// the GIL. A destructor that would touch Python asks first; none that can run Python code is noexcept, since
/// the unwinding may begin inside it.
bool threadHasPython();

/// A variable of each thread that takes no memory of its own when it is first used.
#define QUARNA_THREAD_LOCAL __attribute__((tls_model("initial-exec"))) constinit thread_local

namespace detail {
extern QUARNA_THREAD_LOCAL bool threadIsPrepared;
bool prepareThreadNow();
}  // namespace detail

/// Makes, on a thread's first call, what the C++ runtime stores for a thread that throws: at the first throw it
/// would end the process if it could not have it. False with MemoryError set.
inline bool prepareThreadForExceptions()
{
    return detail::threadIsPrepared || detail::prepareThreadNow();
}

}  // namespace quarna
