// Lists of dimensions as Python code gives them.
#include "construction/dimensions.h"

#include "vocabulary/errors.h"
#include "vocabulary/python_values.h"
#include "vocabulary/references.h"

namespace quarna {

namespace {

/// One entry; -1 with an exception set.
long readDimension(PyObject* sequence, Py_ssize_t position, DimensionRefusals const& refusals)
{
    Reference const item = Reference::steal(PySequence_GetItem(sequence, position));
    if (!item) {
        refuseWith(PyExc_RuntimeError, "Item ", position, refusals.unreadable);
        return -1;
    }
    if (!pyObjectIsLong(item.get())) {
        setError(refusals.noIntegerClass, refusals.noInteger);
        return -1;
    }
    Py_ssize_t const dimension = PyLong_AsSsize_t(item.get());
    if (dimension < 0) {
        setError(PyExc_ValueError, refusals.negative);
        return -1;
    }
    return dimension;
}

}  // namespace

std::optional<std::vector<long>> readDimensions(PyObject* sequence, Py_ssize_t count,
                                                DimensionRefusals const& refusals)
{
    std::vector<long> dims;
    for (Py_ssize_t position = 0; position < count; ++position) {
        long const dimension = readDimension(sequence, position, refusals);
        if (dimension < 0) {
            return std::nullopt;
        }
        dims.push_back(dimension);
    }
    return dims;
}

void dropTrailingOnes(std::vector<long>& dims)
{
    while (dims.size() > 2 && dims.back() == 1) {
        dims.pop_back();
    }
}

}  // namespace quarna
