// Lists of dimensions as Python code gives them, to the constructor and to reshape().
#pragma once

#include "vocabulary/python.h"

#include <optional>
#include <vector>

namespace quarna {

/// How the entries of a list of dimensions are refused.
struct DimensionRefusals {
    const char* unreadable;  // follows "Item " and the position, in a RuntimeError
    PyObject* noIntegerClass;
    const char* noInteger;
    const char* negative;  // in a ValueError, as for an integer that is too large
};

/// The first `count` items of a sequence; empty with an exception set.
std::optional<std::vector<long>> readDimensions(PyObject* sequence, Py_ssize_t count,
                                                DimensionRefusals const& refusals);

/// Dimensions of length 1 at the end do not count, but for the first two.
void dropTrailingOnes(std::vector<long>& dims);

}  // namespace quarna
