// Setting Python exceptions: every message of the module goes through setError.
#pragma once

#include "vocabulary/python.h"

#include <string>
#include <string_view>

namespace quarna {

/// Sets the exception, in place of one that a callee may have set.
void setError(PyObject* exceptionClass, const char* text);

/// What a function returns when it has set an exception: false, -1 or null.
struct Refused {
    // NOLINTBEGIN(google-explicit-constructor): to become a result is all that it is for.
    operator bool() const { return false; }
    operator int() const { return -1; }
    operator PyObject*() const { return nullptr; }
    // NOLINTEND(google-explicit-constructor)
};

inline Refused refuse(PyObject* exceptionClass, const char* text)
{
    setError(exceptionClass, text);
    return {};
}

namespace QCPyError {
/// The exception classes ShapeError and SizeError. Set when the module has been imported, and kept until the process
/// ends; null until then.
extern PyObject* shapeErr;
extern PyObject* sizeErr;
}  // namespace QCPyError

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
Refused refuseWith(PyObject* exceptionClass, Pieces const&... pieces)
{
    return refuse(exceptionClass, composeText(pieces...).c_str());
}

inline constexpr char notInitializedText[] = "object not initialized.";
inline constexpr char notImportedText[] = "module not initialized.";
inline constexpr char allocationText[] = "unable to initialize C object.";

/// "index has an invalid value: " and the index as the caller wrote it, as an IndexError.
Refused refuseIndex(long index);

}  // namespace quarna
