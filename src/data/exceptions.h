// The exceptions of the client layer, and the error codes of the library that become such exceptions.
#pragma once

#include <exception>
#include <string>
#include <utility>

namespace quarna {

/// What native callers may catch without knowing the standard library's exceptions.
class Exception {
public:
    virtual ~Exception() = default;
    virtual const char* what() const noexcept = 0;
};

}  // namespace quarna

namespace quarna::data {

/// One for each error code; FeatureNotSupported is this client's own.
enum class ExceptionType : int {
#define QUARNA_ERROR_CODE(number, name, origin, message) name = (number),
#include "quarna_data_array/error_codes.def"
};

namespace detail {

/// One class for each number, so that a caller can catch one kind.
template <class ExceptionBase, ExceptionType number>
class ArrayException : public ExceptionBase, public std::exception {
public:
    explicit ArrayException(std::string message) : m_message(std::move(message)) {}
    const char* what() const noexcept override { return m_message.c_str(); }

private:
    std::string m_message;
};

template <ExceptionType number>
using DataException = ArrayException<Exception, number>;

/// Throws the exception of a code, SystemError for one that the library does not answer; 0 returns. `errorText` is
/// the message where the code has none: LibraryText and LibraryDetail.
void throwIfError(int code, std::string const& errorText);

}  // namespace detail
}  // namespace quarna::data
