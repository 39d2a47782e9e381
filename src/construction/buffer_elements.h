// The elements of Python's own one-dimensional exporters.
#pragma once

#include "vocabulary/python.h"

#include "data/element_source.h"

#include <optional>

namespace quarna {

/// The elements of a bytes, bytearray, array.array or memoryview of one dimension, none of a subclass; their
/// storage is held meanwhile.
class BufferElements {
public:
    explicit BufferElements(PyObject* object);
    BufferElements(BufferElements const&) = delete;
    BufferElements& operator=(BufferElements const&) = delete;
    ~BufferElements() noexcept(false);

    std::optional<ElementSource> const& source() const { return m_source; }

private:
    Py_buffer m_view{};
    std::optional<ElementSource> m_source;
};

}  // namespace quarna
