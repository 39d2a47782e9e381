// Arrays: what they are made of, what they tell, and how they part with their elements.
#include "array.h"

#include "element_type.h"
#include "operations.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>

namespace quarna::library {

namespace {

// A dimension of length 0 comes first: beside it no other length is too large.
std::size_t elementCount(Shape const& dimensions)
{
    if (std::find(dimensions.begin(), dimensions.end(), 0U) != dimensions.end()) {
        return 0;
    }
    std::size_t count = 1;
    for (std::size_t const length : dimensions) {
        require(!__builtin_mul_overflow(count, length, &count), Code::TooManyElements);
    }
    return count;
}

Block copyElements(quarna_array const& array)
{
    std::size_t const bytes = byteCount(array.type, array.count);
    Block copy = newBlock(bytes);
    if (bytes != 0) {
        std::memcpy(copy.get(), array.block.get(), bytes);
    }
    return copy;
}

Block handOver(quarna_array& array)
{
    array.dimensions.clear();
    array.count = 0;
    return std::move(array.block);
}

}  // namespace

Shape copyShape(std::size_t const* dimensions, std::size_t count)
{
    require(dimensions != nullptr || count == 0);
    return count == 0 ? Shape() : Shape(dimensions, dimensions + count);
}

std::unique_ptr<quarna_array> makeArray(std::int32_t type, Shape dimensions, Block block, Layout layout)
{
    std::size_t const count = elementCount(dimensions);
    byteCount(type, count);  // refuses what cannot be addressed
    return std::unique_ptr<quarna_array>(
        new quarna_array{type, std::move(dimensions), count, std::move(block), layout});
}

std::unique_ptr<quarna_array> makeZeroedArray(std::int32_t type, Shape dimensions)
{
    Block block = newZeroedBlock(byteCount(type, elementCount(dimensions)));
    return makeArray(type, std::move(dimensions), std::move(block));
}

quarna_array* operations::create_empty_array() noexcept
{
    quarna_array* array = nullptr;
    answer(&array, [] { return makeZeroedArray(QUARNA_TYPE_DOUBLE, {0, 0}).release(); });
    return array;
}

void operations::destroy_array(quarna_array* array) noexcept
{
    delete array;
}

int operations::get_dimensions(quarna_array const* array, std::size_t* dimension_count,
                               std::size_t const** dimensions) noexcept
{
    int const code = answer(dimension_count, [&] {
        require(array != nullptr && dimensions != nullptr);
        return array->dimensions.size();
    });
    if (dimensions != nullptr) {
        *dimensions = code == 0 ? array->dimensions.data() : nullptr;
    }
    return code;
}

std::size_t operations::get_element_count(quarna_array const* array) noexcept
{
    return array != nullptr ? array->count : 0;
}

int operations::get_type(quarna_array const* array, std::int32_t* type) noexcept
{
    return answer(type, [&] {
        require(array != nullptr);
        return array->type;
    });
}

// An array never holds elements of another type than its own.
int operations::types_are_compatible(std::int32_t wanted, std::int32_t actual, bool* compatible) noexcept
{
    return answer(compatible, [&] {
        elementSize(wanted);
        elementSize(actual);
        return wanted == actual;
    });
}

// Where no copy can be made the answer stays true, and null says that there is nothing to write to. That goes for
// an array, too, whose block was handed over.
bool operations::unshare(quarna_array const* array, bool sole_holder, quarna_array** unshared) noexcept
{
    int const code = answer(unshared, [&]() -> quarna_array* {
        require(array != nullptr && array->block != nullptr);
        return sole_holder
                   ? nullptr
                   : makeArray(array->type, array->dimensions, copyElements(*array), array->layout).release();
    });
    return code != 0 || !sole_holder;
}

int operations::release_buffer(quarna_array* array, bool sole_holder, void** block,
                               quarna_deleter* deleter) noexcept
{
    if (deleter != nullptr) {
        *deleter = nullptr;
    }
    return answer(block, [&] {
        require(array != nullptr && array->block != nullptr && deleter != nullptr);
        Block released = sole_holder ? handOver(*array) : copyElements(*array);
        *deleter = released.get_deleter();
        return released.release();
    });
}

}  // namespace quarna::library
