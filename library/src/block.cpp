// Blocks from the C heap.
#include "block.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <malloc.h>
#include <new>

namespace quarna::library {

namespace {

#ifdef QUARNA_DEBUG_FILL
constexpr bool debugFill = true;
#else
constexpr bool debugFill = false;
#endif

void freeBlock(void* block)
{
    if (debugFill && block != nullptr) {
        std::memset(block, 0x5A, malloc_usable_size(block));
        asm volatile("" : : "r"(block) : "memory");  // a compiler drops stores that free() makes unreadable
    }
    std::free(block);
}

Block owned(void* memory)
{
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    return Block(memory, &freeBlock);
}

}  // namespace

// malloc(0) may answer null, which is no block: hence one byte at least.
Block newBlock(std::size_t bytes)
{
    Block block = owned(std::malloc(std::max<std::size_t>(bytes, 1)));
    if (debugFill) {
        std::memset(block.get(), 0xA5, bytes);
    }
    return block;
}

Block newZeroedBlock(std::size_t bytes)
{
    return owned(std::calloc(std::max<std::size_t>(bytes, 1), 1));
}

}  // namespace quarna::library
