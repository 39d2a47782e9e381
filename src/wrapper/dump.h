// The lines of a dump, for native code that looks for a fault.
#pragma once

#include "data/array_type.h"

#include <ostream>
#include <span>

namespace quarna {

/// The elements of a block in the stream's own format, each with a blank behind it.
void writeElements(std::ostream& stream, void const* block, long count, data::ArrayType type);

/// A label and a value on a line of their own.
template <class Value>
void writeLine(std::ostream& stream, const char* label, Value const& value)
{
    stream << label << ": " << value << std::endl;
}

void writeLine(std::ostream& stream, const char* label, std::span<long const> values);

}  // namespace quarna
