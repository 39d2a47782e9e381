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

/// The numbers of the library's error codes, and two of the client's own.
enum class ExceptionType : int {
    InvalidArrayIndex = 1,
    StringIndexMustBeLast = 2,
    StringIndexNotValid = 3,
    NotEnoughIndices = 5,
    TooManyIndices = 6,
    OnlyOneStringIndex = 7,
    DataTypeMismatch = 8,
    ArrayTypeMismatch = 9,
    FieldDoesNotExist = 10,
    MissingClassName = 13,
    WrongNumberOfEnums = 14,
    NotAString = 16,
    DuplicateFieldName = 18,
    OutOfMemory = 19,
    SystemError = 20,
    EmptyArrayIndexed = 21,
    FeatureNotSupported = 22,
    MemoryLayoutMismatch = 23,
    InputLayoutMismatch = 24,
    OutputLayoutMismatch = 25,
    TooManyElements = 26,
    HeterogeneousObjects = 27,
    LibraryText = 28,
    LibraryDetail = 29,
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

/// Throws the exception of a code; `errorText` is the message of codes 28 and 29. 0 returns.
void throwIfError(int code, std::string const& errorText);

}  // namespace detail
}  // namespace quarna::data
