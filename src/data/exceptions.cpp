// From the library's error codes to their exceptions.
#include "data/exceptions.h"

#include <algorithm>
#include <iterator>

namespace quarna::data::detail {
namespace {

enum class Origin { library, client };

struct ErrorCode {
    int number;
    Origin origin;
    const char* message;
    void (*raise)(std::string message);
};

template <ExceptionType type>
[[noreturn]] void raise(std::string message)
{
    throw DataException<type>(std::move(message));
}

constexpr ErrorCode errorCodes[] = {
#define QUARNA_ERROR_CODE(number, name, origin, message) \
    {number, Origin::origin, message, &raise<ExceptionType::name>},
#include "quarna_data_array/error_codes.def"
};

ErrorCode const& errorCode(int number)
{
    auto const* const found =
        std::find_if(std::begin(errorCodes), std::end(errorCodes), [number](ErrorCode const& code) {
            return code.number == number && code.origin == Origin::library;
        });
    return found != std::end(errorCodes) ? *found : errorCode(static_cast<int>(ExceptionType::SystemError));
}

}  // namespace

void throwIfError(int code, std::string const& errorText)
{
    if (code != 0) {
        ErrorCode const& row = errorCode(code);
        row.raise(*row.message != '\0' ? row.message : errorText);
    }
}

}  // namespace quarna::data::detail
