// Blocks from the C heap.
#include "block.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <malloc.h>
#include <new>
#include <sys/mman.h>

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

// What is read and written as a whole is faster in few large pages than in many small ones. The kernel may decline.
void askForHugePages(void* memory, std::size_t bytes)
{
    constexpr std::size_t least = std::size_t{4} << 20U;
    constexpr std::size_t page = 4096;
    if (bytes >= least) {
        auto const address = reinterpret_cast<std::uintptr_t>(memory);
        std::size_t const ahead = (page - address % page) % page;
        madvise(static_cast<std::byte*>(memory) + ahead, bytes - ahead, MADV_HUGEPAGE);
    }
}

Block owned(void* memory, std::size_t bytes)
{
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    askForHugePages(memory, bytes);
    return Block(memory, &freeBlock);
}

}  // namespace

// malloc(0) may answer null, which is no block: hence one byte at least.
Block newBlock(std::size_t bytes)
{
    Block block = owned(std::malloc(std::max<std::size_t>(bytes, 1)), bytes);
    if (debugFill) {
        std::memset(block.get(), 0xA5, bytes);
    }
    return block;
}

Block newZeroedBlock(std::size_t bytes)
{
    return owned(std::calloc(std::max<std::size_t>(bytes, 1), 1), bytes);
}

}  // namespace quarna::library
