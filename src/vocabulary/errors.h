// Setting Python exceptions: every message of the module goes through setError.
#pragma once

#include "vocabulary/python.h"

#include <string>
#include <string_view>

/// Sets the exception, in place of one that a callee may have set.
void setError(PyObject* exceptionClass, const char* text);

namespace QCPyError {
/// The exception classes ShapeError and SizeError. Set when the module has been imported, and kept until the process
/// ends; null until then.
extern PyObject* shapeErr;
extern PyObject* sizeErr;
}  // namespace QCPyError

namespace quarna {

// One piece of a text: the same in every locale. A number with a fraction has six significant digits, and a NaN no
// sign.
void appendPiece(std::string& text, double piece);
void appendPiece(std::string& text, long piece);
void appendPiece(std::string& text, unsigned long piece);
inline void appendPiece(std::string& text, std::string_view piece)
{
    text += piece;
}

/// The pieces one after the other. For refusals only: it allocates, and throws std::bad_alloc rather than cut a
/// text short.
template <class... Pieces>
std::string composeText(Pieces const&... pieces)
{
    std::string text;
    (appendPiece(text, pieces), ...);
    return text;
}

template <class... Pieces>
void setComposedError(PyObject* exceptionClass, Pieces const&... pieces)
{
    setError(exceptionClass, composeText(pieces...).c_str());
}

inline constexpr char notInitializedText[] = "object not initialized.";
inline constexpr char notImportedText[] = "module not initialized.";
inline constexpr char allocationText[] = "unable to initialize C object.";

/// "index has an invalid value: " and the index as the caller wrote it, as an IndexError.
void setIndexError(long index);

}  // namespace quarna
