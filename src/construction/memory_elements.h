// Sequences whose elements lie in memory as numbers.
#pragma once

#include "vocabulary/python.h"

#include "data/element_source.h"

#include <optional>

namespace quarna {

/// The elements of an array of ours, of a bytes, bytearray, array.array or memoryview of one dimension, or of a range
/// of 64-bit integers; none of a subclass. The caller holds the object.
class MemoryElements {
public:
    explicit MemoryElements(PyObject* object);
    MemoryElements(MemoryElements const&) = delete;
    MemoryElements& operator=(MemoryElements const&) = delete;
    ~MemoryElements() noexcept(false);

    /// Empty, without an exception, for all else, and for an array of ours that is stale.
    std::optional<ElementSource> const& source() const { return m_source; }

    /// To be called before the source is looked at again when Python code may have run. False with RuntimeError set if
    /// an array of ours has another shape now.
    bool refresh();

private:
    void takeArray(PyObject* object);
    void takeBuffer(PyObject* object);
    void takeRange(PyObject* object);

    PyObject* m_array = nullptr;  // of ours
    unsigned long m_reshapes = 0;
    Py_buffer m_view{};
    std::optional<ElementSource> m_source;
};

}  // namespace quarna
