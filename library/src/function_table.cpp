// The way from a number to its operation.
#include "function_table.h"

#include "operations.h"

namespace quarna::library {

void* findOperation(int number) noexcept
{
    switch (number) {
#define QUARNA_OPERATION(number, name, presence, result, arguments) \
    case number:                                                    \
        return reinterpret_cast<void*>(&operations::name);
#include "quarna_data_array/operations.def"
    default:
        return nullptr;
    }
}

}  // namespace quarna::library
