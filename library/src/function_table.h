// Finds an operation by its number.
#pragma once

namespace quarna::library {

/// The operation, to be cast to its function type, or null if there is none of that number.
void* findOperation(int number) noexcept;

}  // namespace quarna::library
