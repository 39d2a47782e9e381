// The fast road for the innermost lists of a nest.
#pragma once

#include "vocabulary/python.h"

#include "numbers/plain_number.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace quarna {

/// The items of an exact list or tuple; empty for another object.
inline std::span<PyObject* const> exactItems(PyObject* sequence)
{
    if (!PyList_CheckExact(sequence) && !PyTuple_CheckExact(sequence)) {
        return {};
    }
    return {PySequence_Fast_ITEMS(sequence), static_cast<std::size_t>(PySequence_Fast_GET_SIZE(sequence))};
}

/// The same if each of them is plain (see plainElement).
template <class T>
std::span<PyObject* const> plainRow(PyObject* sequence, bool coerceToLogical)
{
    auto const items = exactItems(sequence);
    bool const isPlain = std::all_of(items.begin(), items.end(), [coerceToLogical](PyObject* item) {
        return plainElement<T>(item, coerceToLogical).isPlain;
    });
    return isPlain ? items : std::span<PyObject* const>();
}

}  // namespace quarna
