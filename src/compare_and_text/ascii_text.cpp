// Text that grows where it will stay: in the memory of a str.
#include "compare_and_text/ascii_text.h"

#include <algorithm>
#include <limits>
#include <new>

namespace quarna {

namespace {

PyObject* newAscii(std::size_t length)
{
    constexpr auto largest = static_cast<std::size_t>(std::numeric_limits<Py_ssize_t>::max());
    // One character at least: all empty strings are one, which nobody may write to.
    PyObject* const text = length <= largest
                               ? PyUnicode_New(static_cast<Py_ssize_t>(std::max<std::size_t>(length, 1)), 127)
                               : PyErr_NoMemory();
    return text != nullptr ? text : throw std::bad_alloc();
}

}  // namespace

AsciiText::AsciiText(std::size_t room)
    : m_text(Reference::steal(newAscii(room))), m_next(begin()), m_end(begin() + room)
{}

// Moves the characters if they cannot stay.
bool AsciiText::resize(std::size_t room)
{
    std::size_t const written = length();
    PyObject* text = m_text.release();
    bool const isResized = PyUnicode_Resize(&text, static_cast<Py_ssize_t>(room)) == 0;
    m_text = Reference::steal(text);
    if (isResized) {
        m_next = begin() + written;
        m_end = begin() + room;
    }
    return isResized;
}

void AsciiText::grow(std::size_t count)
{
    std::size_t const needed = length() + count;
    if (!resize(needed + needed / 4)) {
        throw std::bad_alloc();
    }
}

void AsciiText::append(std::string_view text)
{
    char* const out = room(text.size());
    writtenTo(out + text.copy(out, text.size()));
}

void AsciiText::append(std::size_t count, char character)
{
    writtenTo(std::fill_n(room(count), count, character));
}

PyObject* AsciiText::finished()
{
    return resize(length()) ? m_text.release() : nullptr;
}

}  // namespace quarna
