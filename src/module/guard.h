// The seam between native code, which throws, and the interpreter, which no exception may reach.
#pragma once

#include "vocabulary/python.h"

#include "vocabulary/thread.h"

#include <cxxabi.h>

#include <type_traits>

namespace quarna {

/// Turns the exception in flight into a Python exception. One that is set already stays; exhausted memory becomes
/// MemoryError, all else RuntimeError with its text.
void setErrorOfCaughtException();

template <auto function>
struct Guard;

template <class Result, class... Arguments, Result (*function)(Arguments...)>
struct Guard<function> {
    static_assert(!std::is_void_v<Result>, "what cannot report a failure must not throw");

    // To a handler, an unwinding that no exception caused is a reference to nothing.
    __attribute__((no_sanitize("null"))) static Result entry(Arguments... arguments)
    {
        if (!prepareThreadForExceptions()) {
            return failure();
        }
        try {
            return function(arguments...);
        } catch (abi::__forced_unwind&) {
            // CPython ends daemon threads at exit by unwinding them, which must not be stopped.
            throw;
        } catch (...) {
            setErrorOfCaughtException();
        }
        return failure();
    }

    static Result failure()
    {
        if constexpr (std::is_pointer_v<Result>) {
            return nullptr;
        } else {
            return -1;
        }
    }
};

/// `function` with its own signature, for a slot or table that C code calls.
template <auto function>
inline constexpr auto guarded = &Guard<function>::entry;

}  // namespace quarna
