// The arguments of a class's constructor.
#include "construction/constructor_arguments.h"

#include "vocabulary/errors.h"

namespace quarna {
namespace {

bool retrieveBoolKwarg(PyObject* value, const char* name, bool& ok)
{
    ok = value != nullptr && PyBool_Check(value);
    if (value == nullptr) {
        setComposedError(PyExc_TypeError, "value passed to '", name, "' is null.");
    } else if (!ok) {
        setComposedError(PyExc_TypeError, "value passed to '", name, "' must be a bool.");
    }
    return value == Py_True;
}

// A class that the pickle machinery calls receives no keywords, so its arguments bring them along as a dictionary.
bool hasLeadingDictionary(PyObject* args, PyObject* kwds)
{
    return kwds == nullptr && args != nullptr && PyTuple_GET_SIZE(args) > 0 &&
           PyDict_Check(PyTuple_GET_ITEM(args, 0));
}

}  // namespace

std::optional<ConstructorArguments> parseConstructorArguments(PyObject* args, PyObject* kwds)
{
    Reference positional = Reference::borrow(args);
    if (hasLeadingDictionary(args, kwds)) {
        kwds = PyTuple_GET_ITEM(args, 0);
        positional = Reference::steal(PyTuple_GetSlice(args, 1, PyTuple_GET_SIZE(args)));
        if (!positional) {
            return std::nullopt;
        }
    }
    static const char* const names[] = {"initializer", "size", "vector", "is_complex", nullptr};
    PyObject* initializer = nullptr;
    PyObject* size = nullptr;
    PyObject* vector = nullptr;
    PyObject* isComplex = nullptr;
    if (!PyArg_ParseTupleAndKeywords(positional.get(), kwds, "|OOOO", const_cast<char**>(names), &initializer,
                                     &size, &vector, &isComplex)) {
        return std::nullopt;
    }
    ConstructorArguments arguments{Reference::borrow(initializer), Reference::borrow(size),
                                   Reference::borrow(vector)};
    if (isComplex != nullptr) {
        bool ok = true;
        arguments.isComplex = retrieveBoolKwarg(isComplex, "is_complex", ok);
        if (!ok) {
            return std::nullopt;
        }
    }
    arguments.vectorIsKeyword = kwds != nullptr && PyDict_GetItemString(kwds, "vector") != nullptr;
    return arguments;
}

}  // namespace quarna
