// Iterators: the way to the address of the elements, which outlives them.
#include "operations.h"
#include "position.h"

#include <cstddef>
#include <new>

namespace quarna::library {

namespace {

quarna_iterator* iteratorAt(quarna_array const* array, std::size_t index)
{
    return array != nullptr ? new (std::nothrow) quarna_iterator{{array, index}} : nullptr;
}

int addressOf(quarna_iterator const* iterator, bool complex, void** address)
{
    return answer(address, [&] {
        require(iterator != nullptr);
        require(isComplex(iterator->array->type) == complex, Code::DataTypeMismatch);
        return iterator->address();
    });
}

}  // namespace

// Writing needs no preparation here: the caller has unshared the array before.
quarna_iterator* operations::begin(quarna_array* array, bool /*writable*/) noexcept
{
    return iteratorAt(array, 0);
}

quarna_iterator* operations::begin_fast(quarna_array* array, bool writable) noexcept
{
    return begin(array, writable);
}

quarna_iterator* operations::end(quarna_array* array, bool /*writable*/) noexcept
{
    return iteratorAt(array, get_element_count(array));
}

quarna_iterator* operations::end_fast(quarna_array* array, bool writable) noexcept
{
    return end(array, writable);
}

quarna_iterator* operations::copy_iterator(quarna_iterator const* iterator) noexcept
{
    return iterator != nullptr ? new (std::nothrow) quarna_iterator(*iterator) : nullptr;
}

void operations::destroy_iterator(quarna_iterator* iterator) noexcept
{
    delete iterator;
}

int operations::get_address(quarna_iterator const* iterator, void** address) noexcept
{
    return addressOf(iterator, false, address);
}

int operations::get_complex_address(quarna_iterator const* iterator, void** address) noexcept
{
    return addressOf(iterator, true, address);
}

// Past the last element too: a client without get_complex_address learns the end of the elements this way.
int operations::dereference(quarna_iterator const* iterator, quarna_reference** reference) noexcept
{
    return answer(reference, [&] {
        require(iterator != nullptr);
        return new quarna_reference{*iterator};
    });
}

}  // namespace quarna::library
