// Elements that lie in memory already, in place of a sequence that would give them one by one as Python objects.
#pragma once

#include "vocabulary/python.h"

#include "data/array_type.h"
#include "wrapper/strided_view.h"

#include <optional>

namespace quarna {

/// What a sequence holds, nested as the view is. Good while the sequence is left alone.
struct ElementSource {
    data::ArrayType type;
    void const* block;
    StridedView view;
};

/// Finds the elements of an object; empty, without an exception, for one that is to be walked.
using FindElements = std::optional<ElementSource> (*)(PyObject* object);

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
