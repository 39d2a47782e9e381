// Factories: every array with elements, and every block, comes from one.
#include "array.h"
#include "element_type.h"
#include "operations.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

// A factory has no state: it is the ticket without which nothing is made. All are one.
struct quarna_factory {};

namespace quarna::library {

namespace {

quarna_factory theFactory;

Layout layoutFrom(std::int32_t layout)
{
    require(layout == static_cast<std::int32_t>(Layout::ColumnMajor) ||
                layout == static_cast<std::int32_t>(Layout::RowMajor),
            Code::MemoryLayoutMismatch);
    return static_cast<Layout>(layout);
}

}  // namespace

int operations::create_factory(quarna_factory** factory) noexcept
{
    return answer(factory, [] { return &theFactory; });
}

void operations::destroy_factory(quarna_factory*) noexcept {}

int operations::create_array(quarna_factory* factory, std::int32_t type, std::size_t const* dimensions,
                             std::size_t dimension_count, quarna_array** array) noexcept
{
    return answer(array, [&] {
        require(factory != nullptr);
        return makeZeroedArray(type, shapeFrom(dimensions, dimension_count)).release();
    });
}

int operations::create_scalar(quarna_factory* factory, std::int32_t type, void const* value,
                              quarna_array** array) noexcept
{
    return answer(array, [&] {
        require(factory != nullptr && value != nullptr);
        std::size_t const size = elementSize(type);
        Block block = newBlock(size);
        std::memcpy(block.get(), value, size);
        return makeArray(type, std::array<std::size_t, 2>{1, 1}, std::move(block)).release();
    });
}

int operations::create_buffer(quarna_factory* factory, void** block, quarna_deleter* deleter,
                              std::int32_t type, std::size_t count) noexcept
{
    if (deleter != nullptr) {
        *deleter = nullptr;
    }
    return answer(block, [&] {
        require(factory != nullptr && deleter != nullptr);
        Block made = newBlock(byteCount(type, count));
        *deleter = made.get_deleter();
        return made.release();
    });
}

int operations::adopt_buffer(quarna_factory* factory, std::int32_t type, std::size_t const* dimensions,
                             std::size_t dimension_count, void* block, quarna_deleter deleter,
                             quarna_array** array) noexcept
{
    return adopt_buffer_in_order(factory, type, dimensions, dimension_count, block, deleter, array,
                                 static_cast<std::int32_t>(Layout::ColumnMajor));
}

// The block is the library's from the first line on, whatever becomes of the array.
int operations::adopt_buffer_in_order(quarna_factory* factory, std::int32_t type,
                                      std::size_t const* dimensions, std::size_t dimension_count, void* block,
                                      quarna_deleter deleter, quarna_array** array,
                                      std::int32_t layout) noexcept
{
    Block adopted(deleter != nullptr ? block : nullptr, deleter);
    return answer(array, [&] {
        require(factory != nullptr && adopted != nullptr);
        return makeArray(type, shapeFrom(dimensions, dimension_count), std::move(adopted), layoutFrom(layout))
            .release();
    });
}

}  // namespace quarna::library
