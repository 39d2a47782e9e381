// How work inside the library fails: one thrown code, and the place where it becomes an answer.
#pragma once

#include "quarna_data_array/numbers.h"

#include <new>

namespace quarna::library {

/// What operations answer.
enum class Code : int {
    Success = QUARNA_SUCCESS,
#define QUARNA_ERROR_CODE(number, name, origin, message) name = (number),
#include "quarna_data_array/error_codes.def"
};

/// Thrown and caught inside the library only.
struct Failure {
    Code code;
};

inline void require(bool condition, Code code = Code::SystemError)
{
    if (!condition) {
        throw Failure{code};
    }
}

/// Does the work and returns its code. Nothing that the work throws goes further.
template <class Work>
int answer(Work work) noexcept
{
    try {
        work();
        return static_cast<int>(Code::Success);
    } catch (Failure const& failure) {
        return static_cast<int>(failure.code);
    } catch (std::bad_alloc const&) {
        return static_cast<int>(Code::OutOfMemory);
    } catch (...) {
        return static_cast<int>(Code::SystemError);
    }
}

/// The same for work with one result: *out is what make() returns, or zero if it failed.
template <class Out, class Make>
int answer(Out* out, Make make) noexcept
{
    if (out == nullptr) {
        return static_cast<int>(Code::SystemError);
    }
    *out = Out();
    return answer([&] { *out = make(); });
}

}  // namespace quarna::library
