// The element types of arrays: numbers 0, 1 and 3 to 22, and how many bytes an element of each has.
#pragma once

#include "failure.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace quarna::library {

inline constexpr std::int32_t doubleType = 3;
inline constexpr std::int32_t firstComplexType = 13;
inline constexpr std::array<std::size_t, 23> elementSizes{
    1,  2, 0,                        // logical, character, number 2 is none
    8,  4, 1, 1, 2, 2, 4, 4, 8,  8,  // double, single, then int8 to uint64, signed before unsigned
    16, 8, 2, 2, 4, 4, 8, 8, 16, 16  // the complex forms of these ten
};

constexpr bool isComplex(std::int32_t type)
{
    return type >= firstComplexType;
}

/// Bytes of one element. Throws SystemError for a number that is no type.
inline std::size_t elementSize(std::int32_t type)
{
    require(type >= 0 && static_cast<std::size_t>(type) < elementSizes.size());
    std::size_t const size = elementSizes[static_cast<std::size_t>(type)];
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
