// The fast road for the innermost lists of a nest.
#pragma once

#include "vocabulary/python.h"

#include "numbers/plain_number.h"

#include <algorithm>
#include <cstddef>
#include <span>

namespace quarna {

/// The items of an exact list or tuple if each of them is plain (see plainElement); else none.
template <class T>
std::span<PyObject* const> plainRow(PyObject* sequence, bool coerceToLogical)
{
    if (!PyList_CheckExact(sequence) && !PyTuple_CheckExact(sequence)) {
        return {};
    }
    std::span<PyObject* const> const items(PySequence_Fast_ITEMS(sequence),
                                           static_cast<std::size_t>(PySequence_Fast_GET_SIZE(sequence)));
    bool const isPlain = std::all_of(items.begin(), items.end(), [coerceToLogical](PyObject* item) {
        return plainElement<T>(item, coerceToLogical).has_value();
    });
    return isPlain ? items : std::span<PyObject* const>();
}

}  // namespace quarna
