// Setting Python exceptions: every message of the module goes through setError.
#pragma once

#include "vocabulary/python.h"

#include <ios>
#include <sstream>
#include <string>

/// Sets the exception, in place of one that a callee may have set.
void setError(PyObject* exceptionClass, const char* text);

namespace QCPyError {
/// The exception classes ShapeError and SizeError; borrowed from the module's dictionary.
extern PyObject* shapeErr;
extern PyObject* sizeErr;
}  // namespace QCPyError

namespace quarna {

/// The pieces one after the other, in the stream's default format. For refusals only: it allocates, and throws
/// std::bad_alloc rather than cut a text short.
template <class... Pieces>
std::string composeText(Pieces const&... pieces)
{
    std::ostringstream stream;
    stream.exceptions(std::ios::badbit);
    (stream << ... << pieces);
    return stream.str();
}

template <class... Pieces>
void setComposedError(PyObject* exceptionClass, Pieces const&... pieces)
{
    setError(exceptionClass, composeText(pieces...).c_str());
}

inline constexpr char notInitializedText[] = "object not initialized.";
inline constexpr char allocationText[] = "unable to initialize C object.";

/// "index has an invalid value: " and the index as the caller wrote it, as an IndexError.
void setIndexError(long index);

}  // namespace quarna
