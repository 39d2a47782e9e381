// Setting Python exceptions.
#include "vocabulary/errors.h"

#include <array>
#include <charconv>
#include <cmath>

namespace quarna {

PyObject* QCPyError::shapeErr = nullptr;
PyObject* QCPyError::sizeErr = nullptr;

void setError(PyObject* exceptionClass, const char* text)
{
    PyErr_SetString(exceptionClass, text);
}

Refused refuseIndex(long index)
{
    return refuseWith(PyExc_IndexError, "index has an invalid value: ", index);
}

namespace {

template <class... Format>
void appendDigits(std::string& text, Format... format)
{
    std::array<char, 32> digits{};
    text.append(digits.data(), std::to_chars(digits.begin(), digits.end(), format...).ptr);
}

}  // namespace

void appendPiece(std::string& text, double piece)
{
    appendDigits(text, std::isnan(piece) ? std::fabs(piece) : piece, std::chars_format::general, 6);
}

void appendPiece(std::string& text, long piece)
{
    appendDigits(text, piece);
}

void appendPiece(std::string& text, unsigned long piece)
{
    appendDigits(text, piece);
}

}  // namespace quarna
