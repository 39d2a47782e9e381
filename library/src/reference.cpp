// References: one element, to be addressed by its parts or stored.
#include "operations.h"
#include "position.h"

#include <cstddef>
#include <cstdint>
#include <cstring>

namespace quarna::library {

namespace {

// A complex element is its real part and, right behind it, its imaginary part.
void* imaginaryPart(quarna_reference const& reference)
{
    return static_cast<std::byte*>(reference.address()) + elementSize(reference.array->type) / 2;
}

}  // namespace

int operations::get_reference(quarna_array* array, std::size_t index, quarna_reference** reference) noexcept
{
    return answer(reference, [&] {
        require(array != nullptr);
        require(index < array->count, Code::InvalidArrayIndex);
        return new quarna_reference{{array, index}};
    });
}

// A real element is all real part; the address of its imaginary part is null.
int operations::get_part_addresses(quarna_reference const* reference, void** real, void** imaginary) noexcept
{
    if (imaginary != nullptr) {
        *imaginary = nullptr;
    }
    return answer(real, [&] {
        require(reference != nullptr && imaginary != nullptr);
        if (isComplex(reference->array->type)) {
            *imaginary = imaginaryPart(*reference);
        }
        return reference->address();
    });
}

int operations::set_complex(quarna_reference* reference, std::int32_t type, void const* real,
                            void const* imaginary) noexcept
{
    return answer([&] {
        require(reference != nullptr && real != nullptr && imaginary != nullptr);
        require(type == reference->array->type && isComplex(type), Code::DataTypeMismatch);
        require(reference->index < reference->array->count, Code::InvalidArrayIndex);
        std::size_t const width = elementSize(type) / 2;
        std::memmove(reference->address(), real, width);
        std::memmove(imaginaryPart(*reference), imaginary, width);
    });
}

void operations::destroy_reference(quarna_reference* reference) noexcept
{
    delete reference;
}

}  // namespace quarna::library
