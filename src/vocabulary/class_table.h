// What the module knows of its eleven array classes, each fact taken from class_table.def.
#pragma once

#include "vocabulary/python.h"

#include "elements/element.h"
#include "vocabulary/export.h"

#include <array>
#include <cstddef>
#include <cstdint>

namespace quarna {

/// The element class of an array: of its real or imaginary part, whether it is complex or not.
enum class SupportedArrayEnum : std::int8_t {
#define QUARNA_CLASS(suffix, attribute, element, code) class_##attribute,
#include "vocabulary/class_table.def"
};

/// The names of the classes, indexed by SupportedArrayEnum.
inline constexpr std::array classNames{
#define QUARNA_CLASS(suffix, attribute, element, code) #attribute,
#include "vocabulary/class_table.def"
};

inline constexpr std::size_t classCount = classNames.size();

constexpr std::size_t rowOf(SupportedArrayEnum arrayClass)
{
    return static_cast<std::size_t>(arrayClass);
}

template <class Real>
struct ClassOfReal;

#define QUARNA_CLASS(suffix, attribute, element, code)                       \
    template <>                                                              \
    struct ClassOfReal<element> {                                            \
        static constexpr auto value = SupportedArrayEnum::class_##attribute; \
    };
#include "vocabulary/class_table.def"

// No class holds characters; the dispatch over the library's types has an arm for them all the same.
template <>
struct ClassOfReal<char16_t> : ClassOfReal<std::uint16_t> {};

/// The class whose arrays hold T, real or complex.
template <class T>
inline constexpr SupportedArrayEnum classOf = ClassOfReal<RealPartOf<T>>::value;

/// The class's name in Python and in messages; a complex T has the name of its real part's class.
template <class T>
inline constexpr const char* className = classNames[rowOf(classOf<T>)];

}  // namespace quarna

extern "C" {
/// The eleven type objects and their array.array codes, in table order.
QUARNA_EXPORT extern PyTypeObject* const TypeObjectPointers[quarna::classCount];
QUARNA_EXPORT extern const char TypeAsChar[quarna::classCount];
}
