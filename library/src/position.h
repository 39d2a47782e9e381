// A place in an array: what an iterator moves over and a reference stands for.
#pragma once

#include "array.h"
#include "element_type.h"

#include <cstddef>

namespace quarna::library {

/// Does not keep the array alive. An index equal to the number of elements is past the last: it has an
/// address, but no element.
struct Position {
    quarna_array const* array;
    std::size_t index;

    void* address() const
    {
        return static_cast<std::byte*>(array->block.get()) + index * elementSize(array->type);
    }
};

}  // namespace quarna::library

struct quarna_iterator : quarna::library::Position {};
struct quarna_reference : quarna::library::Position {};
