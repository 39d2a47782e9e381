// Small Python values that attributes and methods return.
#include "module/values.h"

#include "vocabulary/errors.h"
#include "vocabulary/references.h"

#include <cstddef>

namespace quarna {

PyObject* makePyObjectFromLong(long value)
{
    PyObject* const object = PyLong_FromLong(value);
    if (object == nullptr) {
        setError(PyExc_RuntimeError, "unable to construct Python object from integer.");
    }
    return object;
}

PyObject* makeTuple(std::vector<long> values)
{
    Reference tuple = Reference::steal(PyTuple_New(static_cast<Py_ssize_t>(values.size())));
    for (std::size_t place = 0; tuple && place < values.size(); ++place) {
        PyObject* const value = makePyObjectFromLong(values[place]);
        if (value == nullptr) {
            return nullptr;
        }
        PyTuple_SET_ITEM(tuple.get(), static_cast<Py_ssize_t>(place), value);
    }
    return tuple.release();
}

}  // namespace quarna
