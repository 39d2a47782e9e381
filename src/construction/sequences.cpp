// Sequences as CPython's sequence protocol shows them.
#include "construction/sequences.h"

#include "vocabulary/errors.h"

namespace quarna {

Reference Items::at(Py_ssize_t index) const
{
    if (m_isList && index < PyList_GET_SIZE(m_sequence)) {
        return Reference::borrow(PyList_GET_ITEM(m_sequence, index));
    }
    if (m_isTuple) {
        return Reference::borrow(PyTuple_GET_ITEM(m_sequence, index));
    }
    return Reference::steal(PySequence_GetItem(m_sequence, index));
}

namespace {

// What stands for the length of a child that is a scalar, and of one whose length could not be had.
constexpr Py_ssize_t scalar = -1;
constexpr Py_ssize_t failed = -2;

Py_ssize_t lengthOfChild(PyObject* child)
{
    if (!PySequence_Check(child)) {
        return scalar;
    }
    Py_ssize_t const length = PySequence_Size(child);
    return length < 0 ? failed : length;
}

/// Whether a child is what the first one was. Its length is asked only if that decides; false with an exception set.
bool requireLike(PyObject* child, Py_ssize_t lengthOfFirst)
{
    constexpr char unlike[] = "elements of array are of different lengths or types.";
    bool const isSequence = PySequence_Check(child) != 0;
    if (isSequence != (lengthOfFirst != scalar)) {
        return refuse(PyExc_ValueError, unlike);
    }
    Py_ssize_t const length = isSequence ? lengthOfChild(child) : scalar;
    if (length == failed) {
        return false;
    }
    if (length != lengthOfFirst) {
        return refuse(PyExc_ValueError, unlike);
    }
    return true;
}

bool requireUniformChildren(PyObject* sequence, Py_ssize_t count)
{
    Items const items(sequence);
    Py_ssize_t lengthOfFirst = failed;
    if (Reference const first = items.at(0)) {
        lengthOfFirst = lengthOfChild(first.get());
    }
    if (lengthOfFirst == failed) {
        return false;
    }
    for (Py_ssize_t index = 1; index < count; ++index) {
        Reference const child = items.at(index);
        if (!child || !requireLike(child.get(), lengthOfFirst)) {
            return false;
        }
    }
    return true;
}

}  // namespace

std::optional<long> lengthOfUniformSequence(PyObject* sequence)
{
    Py_ssize_t const length = PySequence_Size(sequence);
    if (length < 0) {
        return std::nullopt;
    }
    // The only child of a sequence has nothing to be compared with, and is not asked.
    if (length > 1 && !requireUniformChildren(sequence, length)) {
        return std::nullopt;
    }
    return length;
}

}  // namespace quarna
