// The operations as C++ functions, declared from their rows; each is defined beside the object it works on.
#pragma once

#include "quarna_data_array/c_abi.h"

namespace quarna::library::operations {

#define QUARNA_OPERATION(number, name, presence, result, arguments) result name arguments noexcept;
#include "quarna_data_array/operations.def"

}  // namespace quarna::library::operations
