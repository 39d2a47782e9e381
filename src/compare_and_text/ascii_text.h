// Text that grows where it will stay: in the memory of a str.
#pragma once

#include "vocabulary/python.h"

#include "vocabulary/references.h"

#include <cstddef>
#include <string_view>

namespace quarna {

/// ASCII characters on their way into a str. All but finished() throw std::bad_alloc where there is no memory, with
/// MemoryError set. Nothing in here runs Python code.
class AsciiText {
public:
    /// Empty, with room for so many characters.
    explicit AsciiText(std::size_t room);

    /// Where the next characters go, with room for `count` of them. Who writes there tells the end of what he wrote.
    char* room(std::size_t count)
    {
        if (static_cast<std::size_t>(m_end - m_next) < count) {
            grow(count);
        }
        return m_next;
    }
    void writtenTo(char* end) { m_next = end; }

    void append(std::string_view text);
    void append(std::size_t count, char character);

    /// The str, as a new reference; null with MemoryError set. The text ends with it.
    PyObject* finished();

private:
    char* begin() const { return static_cast<char*>(PyUnicode_DATA(m_text.get())); }
    std::size_t length() const { return static_cast<std::size_t>(m_next - begin()); }
    bool resize(std::size_t room);
    void grow(std::size_t count);

    Reference m_text;
    char* m_next;
    char* m_end;
};

}  // namespace quarna
