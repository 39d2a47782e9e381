// A C heap that has no small blocks left when it is told so; stands in front of the real one.
#include <cstddef>
#include <cstdlib>

extern "C" {

void* __libc_malloc(std::size_t bytes);
void* __libc_calloc(std::size_t count, std::size_t bytes);

/// From now on blocks of up to this many bytes are refused; 0 ends it.
std::size_t failing_malloc_limit = 0;

void* malloc(std::size_t bytes)
{
    return bytes < failing_malloc_limit ? nullptr : __libc_malloc(bytes);
}

void* calloc(std::size_t count, std::size_t bytes)
{
    return count * bytes < failing_malloc_limit ? nullptr : __libc_calloc(count, bytes);
}
}
