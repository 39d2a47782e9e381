// Sequences as CPython's sequence protocol shows them.
#pragma once

#include "vocabulary/references.h"

#include <optional>

namespace quarna {

/// The items of a sequence by index, each held while it is looked at. Lists and tuples are read without the
/// detour through the sequence protocol; a list can have shrunk since its length was asked.
class Items {
public:
    explicit Items(PyObject* sequence)
        : m_sequence(sequence), m_isList(PyList_CheckExact(sequence)), m_isTuple(PyTuple_CheckExact(sequence))
    {}

    /// Null with an exception set.
    Reference at(Py_ssize_t index) const;

private:
    PyObject* m_sequence;
    bool m_isList;
    bool m_isTuple;
};

/// The length of a sequence whose children are all scalars, or all sequences of one length; empty with an exception
/// set.
std::optional<long> lengthOfUniformSequence(PyObject* sequence);

}  // namespace quarna
