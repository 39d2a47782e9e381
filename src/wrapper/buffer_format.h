// The format strings of the buffer protocol for the data array's element types.
#pragma once

#include "data/array_type.h"
#include "vocabulary/export.h"

/// The format of a type, static and not to be freed; null for a type without one, complex types among them.
QUARNA_EXPORT char* classid2format(quarna::data::ArrayType type);

/// The type of a format: 0 and `result` set, or -1 and `result` as it was. Takes "l" and "L" as 64-bit too.
QUARNA_EXPORT int format2classid(const char* format, quarna::data::ArrayType& result);
