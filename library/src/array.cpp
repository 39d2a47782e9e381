// Arrays: what they are made of, what they tell, and how they part with their elements.
#include "array.h"

#include "element_type.h"
#include "operations.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <new>
#include <utility>

namespace quarna::library {

namespace {

// A dimension of length 0 comes first: beside it no other length is too large.
std::size_t elementCount(Shape shape)
{
    if (std::find(shape.begin(), shape.end(), 0U) != shape.end()) {
        return 0;
    }
    std::size_t count = 1;
    for (std::size_t const length : shape) {
        require(!__builtin_mul_overflow(count, length, &count), Code::TooManyElements);
    }
    return count;
}

// The memory comes first: no list of dimensions is read that is longer than any memory.
ArrayOwner makeArrayWithoutBlock(std::int32_t type, Shape shape, Layout layout)
{
    std::size_t bytes = 0;
    if (__builtin_mul_overflow(shape.size(), sizeof(std::size_t), &bytes) ||
        __builtin_add_overflow(bytes, sizeof(quarna_array), &bytes)) {
        throw std::bad_alloc();
    }
    ArrayOwner array(new (::operator new(bytes))
                         quarna_array{Block(nullptr, nullptr), 0, shape.size(), type, layout});
    std::copy(shape.begin(), shape.end(), array->lengths());
    array->count = elementCount(shape);
    byteCount(type, array->count);  // refuses what cannot be addressed
    return array;
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
    array.dimensionCount = 0;
    array.count = 0;
    return std::move(array.block);
}

}  // namespace

void DeleteArray::operator()(quarna_array* array) const
{
    array->~quarna_array();
    ::operator delete(array);
}

Shape shapeFrom(std::size_t const* dimensions, std::size_t count)
{
    require(dimensions != nullptr || count == 0);
    return {dimensions, count};
}

ArrayOwner makeArray(std::int32_t type, Shape shape, Block block, Layout layout)
{
    ArrayOwner array = makeArrayWithoutBlock(type, shape, layout);
    array->block = std::move(block);
    return array;
}

ArrayOwner makeZeroedArray(std::int32_t type, Shape shape)
{
    ArrayOwner array = makeArrayWithoutBlock(type, shape, Layout::ColumnMajor);
    array->block = newZeroedBlock(byteCount(type, array->count));
    return array;
}

quarna_array* operations::create_empty_array() noexcept
{
    quarna_array* array = nullptr;
    answer(&array,
           [] { return makeZeroedArray(QUARNA_TYPE_DOUBLE, std::array<std::size_t, 2>{}).release(); });
    return array;
}

void operations::destroy_array(quarna_array* array) noexcept
{
    ArrayOwner const owner(array);
}

int operations::get_dimensions(quarna_array const* array, std::size_t* dimension_count,
                               std::size_t const** dimensions) noexcept
{
    int const code = answer(dimension_count, [&] {
        require(array != nullptr && dimensions != nullptr);
        return array->dimensionCount;
    });
    if (dimensions != nullptr) {
        *dimensions = code == 0 ? array->shape().data() : nullptr;
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
                   : makeArray(array->type, array->shape(), copyElements(*array), array->layout).release();
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
