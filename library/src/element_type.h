// The element types of arrays: how many bytes an element of each has, and whether it is complex.
#pragma once

#include "failure.h"

#include <cstddef>
#include <cstdint>

namespace quarna::library {

struct ElementType {
    std::size_t bytes;
    int parts;
};

/// No bytes and no parts for a number that is no type.
constexpr ElementType elementType(std::int32_t type)
{
    switch (type) {
#define QUARNA_ELEMENT_TYPE(number, name, bytes, parts, element) \
    case number:                                                 \
        return {bytes, parts};
#include "quarna_data_array/element_types.def"
    default:
        return {};
    }
}

constexpr bool isComplex(std::int32_t type)
{
    return elementType(type).parts == 2;
}

/// Bytes of one element. Throws SystemError for a number that is no type.
inline std::size_t elementSize(std::int32_t type)
{
    std::size_t const size = elementType(type).bytes;
    require(size != 0);
    return size;
}

/// Bytes of `count` elements. Throws SystemError for no type, TooManyElements for more than 63 bits count: no
/// distance between two elements is larger than a pointer difference can say.
inline std::size_t byteCount(std::int32_t type, std::size_t count)
{
    std::ptrdiff_t bytes = 0;
    require(!__builtin_mul_overflow(elementSize(type), count, &bytes), Code::TooManyElements);
    return static_cast<std::size_t>(bytes);
}

}  // namespace quarna::library
