// The table of the library's error codes.
#include "data/exceptions.h"

namespace quarna::data::detail {
namespace {

struct ErrorCode {
    ExceptionType type;
    const char* message;  // null: the text that came with the code
    void (*raise)(std::string message);
};

template <ExceptionType type>
[[noreturn]] void raise(std::string message)
{
    throw DataException<type>(std::move(message));
}

template <ExceptionType type>
constexpr ErrorCode code(const char* message)
{
    return {type, message, &raise<type>};
}

constexpr ErrorCode errorCodes[] = {
    code<ExceptionType::InvalidArrayIndex>("Array index is invalid."),
    code<ExceptionType::StringIndexMustBeLast>("String index must be last."),
    code<ExceptionType::StringIndexNotValid>("String index not valid for this array."),
    code<ExceptionType::NotEnoughIndices>("Not enough indices provided."),
    code<ExceptionType::TooManyIndices>("Too many indices provided."),
    code<ExceptionType::OnlyOneStringIndex>("Can only provide one string index."),
    code<ExceptionType::DataTypeMismatch>("Data type mismatch."),
    code<ExceptionType::ArrayTypeMismatch>("Array type mismatch."),
    code<ExceptionType::FieldDoesNotExist>("Field does not exist in this struct."),
    code<ExceptionType::MissingClassName>("Must specify a class name."),
    code<ExceptionType::WrongNumberOfEnums>("Wrong number of enums supplied."),
    code<ExceptionType::NotAString>("Can't create a std::string from this data."),
    code<ExceptionType::DuplicateFieldName>("Duplicate field names not allowed."),
    code<ExceptionType::OutOfMemory>("Not enough memory available to support the request."),
    code<ExceptionType::EmptyArrayIndexed>("Can't index into an empty array."),
    code<ExceptionType::MemoryLayoutMismatch>("Memory layout mismatch."),
    code<ExceptionType::InputLayoutMismatch>("Memory layout mismatch."),
    code<ExceptionType::OutputLayoutMismatch>("Memory layout mismatch."),
    code<ExceptionType::TooManyElements>("Number of elements exceeds max."),
    code<ExceptionType::HeterogeneousObjects>(
        "ObjectArray not created. Elements must belong to the same class, or to classes that are part of a "
        "heterogeneous hierarchy."),
    code<ExceptionType::LibraryText>(nullptr),
    code<ExceptionType::LibraryDetail>(nullptr),
};

}  // namespace

void throwIfError(int code, std::string const& errorText)
{
    if (code == 0) {
        return;
    }
    for (ErrorCode const& row : errorCodes) {
        if (static_cast<int>(row.type) == code) {
            row.raise(row.message != nullptr ? row.message : errorText);
        }
    }
    throw DataException<ExceptionType::SystemError>("System Error.");
}

}  // namespace quarna::data::detail
