// How work inside the library fails: one thrown code, and the place where it becomes an answer.
#pragma once

#include <new>
#include <stdexcept>

namespace quarna::library {

/// The answers this library gives; the numbers are those that its clients translate.
enum class Code : int {
    Success = 0,
    InvalidIndex = 1,
    TypeMismatch = 8,
    NoMemory = 19,
    SystemError = 20,
    LayoutMismatch = 23,
    TooManyElements = 26,
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
        return static_cast<int>(Code::NoMemory);
    } catch (std::length_error const&) {
        return static_cast<int>(Code::NoMemory);  // a list of dimensions longer than any memory
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
