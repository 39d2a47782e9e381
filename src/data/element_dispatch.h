// From a type number known at run time to an element type: the one place where that step is taken.
#pragma once

#include "data/array_type.h"
#include "data/exceptions.h"

#include <type_traits>

namespace quarna::data {

/// Calls `visitor` with std::type_identity of the element type of `type` and returns what it returns. Throws
/// ArrayTypeMismatch for a number that stands for no element type.
template <class Visitor>
decltype(auto) visitElementType(ArrayType type, Visitor&& visitor)
{
    switch (type) {
#define QUARNA_ARRAY_TYPE(number, name, element) \
    case ArrayType::name:                        \
        return visitor(std::type_identity<element>{});
#include "data/array_types.def"
    }
    throw detail::DataException<ExceptionType::ArrayTypeMismatch>(
        "Invalid type of array passed to apply_numeric_visitor.");
}

}  // namespace quarna::data
