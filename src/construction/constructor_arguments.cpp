// The arguments of a class's constructor.
//
// They are read here and not by CPython's parser: up to 3.7 that one loses a keyword for which it has no memory,
// and it looks keywords up in a dictionary that the caller may have made, whose keys then run code of their own.
// Only what is refused goes to CPython's parser, for its words.
#include "construction/constructor_arguments.h"

#include "vocabulary/errors.h"

#include <utility>

#include <array>
#include <cstddef>

namespace quarna {
namespace {

constexpr std::array<const char*, 5> names{"initializer", "size", "vector", "is_complex", nullptr};
constexpr std::size_t argumentCount = names.size() - 1;
constexpr std::size_t vectorPlace = 2;

/// The place of a keyword among the names; `argumentCount` for one that is not there.
std::size_t placeOf(PyObject* keyword)
{
    std::size_t place = PyUnicode_Check(keyword) ? 0 : argumentCount;
    while (place < argumentCount && PyUnicode_CompareWithASCIIString(keyword, names[place]) != 0) {
        ++place;
    }
    return place;
}

/// The arguments as given, borrowed and unread. Null stands for what was not given.
struct GivenArguments {
    Py_ssize_t firstPositional = 0;
    PyObject* keywords = nullptr;
    std::array<PyObject*, argumentCount> values{};

    /// False, without an exception, if there are too many, unknown ones, or one that was given twice.
    bool take(PyObject* args, PyObject* kwds)
    {
        // A class that the pickle machinery calls receives no keywords, so its arguments bring them along.
        keywords = kwds != nullptr && PyDict_GET_SIZE(kwds) > 0 ? kwds : nullptr;
        if (keywords == nullptr && PyTuple_GET_SIZE(args) > 0 && PyDict_Check(PyTuple_GET_ITEM(args, 0))) {
            keywords = PyTuple_GET_ITEM(args, 0);
            firstPositional = 1;
        }
        return takePositional(args) && (keywords == nullptr || takeKeywords());
    }

private:
    bool takePositional(PyObject* args)
    {
        Py_ssize_t const count = PyTuple_GET_SIZE(args) - firstPositional;
        if (count > static_cast<Py_ssize_t>(argumentCount)) {
            return false;
        }
        for (Py_ssize_t place = 0; place < count; ++place) {
            values[static_cast<std::size_t>(place)] = PyTuple_GET_ITEM(args, firstPositional + place);
        }
        return true;
    }

    bool takeKeywords()
    {
        PyObject* keyword = nullptr;
        PyObject* value = nullptr;
        for (Py_ssize_t position = 0; PyDict_Next(keywords, &position, &keyword, &value) != 0;) {
            std::size_t const place = placeOf(keyword);
            if (place == argumentCount || values[place] != nullptr) {
                return false;
            }
            values[place] = value;
        }
        return true;
    }
};

/// The keywords with keys that run no code: CPython's parser sees what was wrong with them all the same. Where
/// strings of one text stood side by side, a key that is no string takes their place.
Reference plainKeywords(PyObject* keywords)
{
    Reference plain = Reference::steal(PyDict_New());
    PyObject* keyword = nullptr;
    PyObject* value = nullptr;
    for (Py_ssize_t position = 0; plain && PyDict_Next(keywords, &position, &keyword, &value) != 0;) {
        Reference const key = Reference::steal(PyUnicode_Check(keyword) ? PyUnicode_FromObject(keyword)
                                                                        : PyLong_FromSsize_t(position));
        if (!key || PyDict_SetItem(plain.get(), key.get(), Py_None) < 0) {
            return {};
        }
    }
    bool const hasTwins = plain && PyDict_GET_SIZE(plain.get()) < PyDict_GET_SIZE(keywords);
    return hasTwins && PyDict_SetItem(plain.get(), Py_None, Py_None) < 0 ? Reference() : std::move(plain);
}

/// Sets the exception with which CPython refuses such a call.
void refuseAsPythonDoes(PyObject* args, GivenArguments const& given)
{
    Reference const positional =
        Reference::steal(PyTuple_GetSlice(args, given.firstPositional, PyTuple_GET_SIZE(args)));
    Reference const keywords = given.keywords != nullptr ? plainKeywords(given.keywords) : Reference();
    if (!positional || (given.keywords != nullptr && !keywords)) {
        return;
    }
    std::array<PyObject*, argumentCount> unread{};
    if (PyArg_ParseTupleAndKeywords(positional.get(), keywords.get(), "|OOOO",
                                    const_cast<char**>(names.data()), &unread[0], &unread[1], &unread[2],
                                    &unread[3])) {
        // It had no memory to look.
        PyErr_NoMemory();
    }
}

/// True or False, and nothing else; false with an exception set.
bool retrieveBoolKwarg(PyObject* value, const char* name, bool& flag)
{
    if (!PyBool_Check(value)) {
        return refuseWith(PyExc_TypeError, "value passed to '", name, "' must be a bool.");
    }
    flag = value == Py_True;
    return true;
}

}  // namespace

bool parseConstructorArguments(PyObject* args, PyObject* kwds, ConstructorArguments& arguments)
{
    if (args == nullptr) {
        PyErr_BadInternalCall();
        return false;
    }
    GivenArguments given;
    if (!given.take(args, kwds)) {
        refuseAsPythonDoes(args, given);
        return false;
    }
    auto const [initializer, size, vector, isComplex] = given.values;
    arguments.initializer = Reference::borrow(initializer);
    arguments.size = Reference::borrow(size);
    arguments.vector = Reference::borrow(vector);
    arguments.vectorIsKeyword =
        vector != nullptr && PyTuple_GET_SIZE(args) - given.firstPositional <= Py_ssize_t{vectorPlace};
    return isComplex == nullptr || retrieveBoolKwarg(isComplex, "is_complex", arguments.isComplex);
}

}  // namespace quarna
