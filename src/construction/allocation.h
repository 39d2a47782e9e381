// Room for the elements of an array, and its refusal.
#pragma once

#include "data/exceptions.h"
#include "elements/arithmetic.h"
#include "vocabulary/class_table.h"
#include "vocabulary/errors.h"

#include <cstddef>
#include <limits>
#include <new>
#include <optional>

namespace quarna {

/// MemoryError for so many elements of T. A count beyond 63 bits shows as the largest that can be named.
template <class T>
Refused refuseForMemory(std::optional<long> count)
{
    unsigned long const shown =
        count ? static_cast<unsigned long>(*count) : std::numeric_limits<unsigned long>::max();
    return refuseWith(PyExc_MemoryError,
                      "unable to allocate memory for array with number of elements = ", shown,
                      "; type = ", className<T>);
}

/// Lets allocate(count) make room for `count` elements of T. False with MemoryError set if there is none, or cannot
/// be; what else the library has to say is thrown.
template <class T, class Allocate>
bool allocateOrRefuse(std::optional<long> count, Allocate allocate)
{
    using data::ExceptionType;
    using data::detail::DataException;
    if (!count || !checkedProduct(*count, sizeof(T))) {
        return refuseForMemory<T>(count);
    }
    try {
        allocate(static_cast<std::size_t>(*count));
        return true;
    } catch (std::bad_alloc const&) {
        return refuseForMemory<T>(count);
    } catch (DataException<ExceptionType::OutOfMemory> const&) {
        return refuseForMemory<T>(count);
    } catch (DataException<ExceptionType::TooManyElements> const&) {
        return refuseForMemory<T>(count);
    }
}

}  // namespace quarna
