// All element types, for typed tests, and a value of each for every position.
#pragma once

#include "data/array_factory.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <type_traits>
#include <vector>

template <class, class... Elements>
using TestTypes = testing::Types<Elements...>;

using ElementTypes = TestTypes<void
#define QUARNA_ARRAY_TYPE(number, name, element) , element
#include "data/array_types.def"
                               >;

template <class T>
T elementValue(std::size_t position)
{
    if constexpr (quarna::Complex<T>) {
        using Part = quarna::RealPartOf<T>;
        return {static_cast<Part>(position % 101 + 1), static_cast<Part>(position % 89 + 2)};
    } else {
        return static_cast<T>(std::is_same_v<T, bool> ? position % 2 : position % 101 + 1);
    }
}

/// A block from the factory that holds elementValue(0), elementValue(1) and so on.
template <class T>
quarna::data::ElementBuffer<T> filledBuffer(quarna::data::ArrayFactory& factory, std::size_t count)
{
    auto buffer = factory.createBuffer<T>(count);
    for (std::size_t i = 0; i < count; ++i) {
        buffer[i] = elementValue<T>(i);
    }
    return buffer;
}

/// A column-major array of these elements.
template <class T>
quarna::data::TypedArray<T> filledArray(std::vector<std::size_t> const& dimensions)
{
    std::size_t count = 1;
    for (std::size_t const length : dimensions) {
        count *= length;
    }
    quarna::data::ArrayFactory factory;
    return factory.createArrayFromBuffer<T>(dimensions, filledBuffer<T>(factory, count));
}

template <class T>
std::vector<T> elementsOf(quarna::data::TypedArray<T> const& array)
{
    return std::vector<T>(&*array.begin(), &*array.end());
}
