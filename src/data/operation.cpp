// Which release of the library first had an operation.
#include "data/operation.h"

#include <iterator>
#include <string>

namespace quarna::data::detail {
namespace {

struct Release {
    std::int32_t firstOperation;
    const char* name;
};

constexpr Release minRelease[] = {{0, "QR1"}, {109, "QR2"}, {110, "QR3"}, {118, "QR4"}, {123, "FUTURE"}};

}  // namespace

void throwMissingOperation(FunctionType id)
{
    auto release = std::rbegin(minRelease);
    while (release->firstOperation > static_cast<std::int32_t>(id)) {
        ++release;
    }
    throw DataException<ExceptionType::FeatureNotSupported>(std::string("This feature requires ") +
                                                            release->name);
}

}  // namespace quarna::data::detail
