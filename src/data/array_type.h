// The type numbers of the data-array library and the element types they stand for.
#pragma once

#include "quarna_data_array/numbers.h"

#include <complex>
#include <cstddef>
#include <cstdint>

namespace quarna::data {

enum class ArrayType : std::int32_t {
#define QUARNA_ARRAY_TYPE(number, name, element) name = number,
#include "data/array_types.def"
};

/// How elements are laid out: the first index fastest, or the last.
enum class MemoryLayout : std::int32_t {
    COLUMN_MAJOR = QUARNA_LAYOUT_COLUMN_MAJOR,
    ROW_MAJOR = QUARNA_LAYOUT_ROW_MAJOR,
};

template <class T>
struct ArrayTypeOf;

#define QUARNA_ARRAY_TYPE(number, name, element)       \
    template <>                                        \
    struct ArrayTypeOf<element> {                      \
        static constexpr auto value = ArrayType::name; \
    };
#include "data/array_types.def"

/// The type number of arrays of T.
template <class T>
inline constexpr ArrayType arrayTypeOf = ArrayTypeOf<T>::value;

constexpr bool isComplex(ArrayType type)
{
    return type >= ArrayType::COMPLEX_DOUBLE;
}

/// The bytes of one element; 0 for a number that stands for no element type.
constexpr std::size_t elementSize(ArrayType type)
{
    switch (type) {
#define QUARNA_ARRAY_TYPE(number, name, element) \
    case ArrayType::name:                        \
        return sizeof(element);
#include "data/array_types.def"
    }
    return 0;
}

}  // namespace quarna::data
