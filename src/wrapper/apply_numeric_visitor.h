// From an array of run-time type to a typed handle: calls a visitor that is generic over the element type.
#pragma once

#include "data/element_dispatch.h"
#include "data/typed_array.h"

#include <type_traits>
#include <utility>

namespace quarna::data {

template <class T>
using TypedArrayOf = std::conditional_t<std::is_same_v<T, char16_t>, CharArray, TypedArray<T>>;

/// Calls `visitor` with the TypedArray of the array's type and returns what it returns. A shared or constant
/// array gets a further holder for the length of the call; one moved in is moved on. Throws
/// ArrayTypeMismatch for an array of no known element type, which then stays where it was.
template <class ArrayArgument, class Visitor>
decltype(auto) apply_numeric_visitor(ArrayArgument&& array, Visitor&& visitor)
{
    return visitElementType(array.getType(), [&]<class T>(std::type_identity<T>) -> decltype(auto) {
        return visitor(TypedArrayOf<T>(std::forward<ArrayArgument>(array)));
    });
}

}  // namespace quarna::data
