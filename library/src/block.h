// Blocks: the memory that elements lie in, always together with the function that frees it.
#pragma once

#include "quarna_data_array/c_abi.h"

#include <cstddef>
#include <memory>

namespace quarna::library {

using Block = std::unique_ptr<void, quarna_deleter>;

/// A new block, with memory of its own even for 0 bytes, or std::bad_alloc. A build with QUARNA_DEBUG_FILL
/// fills the new one with 0xA5 and each one freed with 0x5A, so that a read of unset or lost elements shows.
Block newBlock(std::size_t bytes);

/// The same with all bytes 0.
Block newZeroedBlock(std::size_t bytes);

}  // namespace quarna::library
