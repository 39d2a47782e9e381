// Setting Python exceptions.
#include "vocabulary/errors.h"

#include <array>
#include <charconv>
#include <cmath>

PyObject* QCPyError::shapeErr = nullptr;
PyObject* QCPyError::sizeErr = nullptr;

void setError(PyObject* exceptionClass, const char* text)
{
    PyErr_SetString(exceptionClass, text);
}

void quarna::setIndexError(long index)
{
    setComposedError(PyExc_IndexError, "index has an invalid value: ", index);
}

namespace {

template <class... Format>
void appendDigits(std::string& text, Format... format)
{
    std::array<char, 32> digits{};
    text.append(digits.data(), std::to_chars(digits.begin(), digits.end(), format...).ptr);
}

}  // namespace

void quarna::appendPiece(std::string& text, double piece)
{
    appendDigits(text, std::isnan(piece) ? std::fabs(piece) : piece, std::chars_format::general, 6);
}

void quarna::appendPiece(std::string& text, long piece)
{
    appendDigits(text, piece);
}

void quarna::appendPiece(std::string& text, unsigned long piece)
{
    appendDigits(text, piece);
}
