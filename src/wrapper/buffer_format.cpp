// The format strings of the buffer protocol.
#include "wrapper/buffer_format.h"

#include <cstring>

namespace {

using quarna::data::ArrayType;

struct FormatRow {
    char format[2];  // writable, as consumers of the buffer protocol declare it
    ArrayType type;
};

FormatRow formats[] = {
    {"d", ArrayType::DOUBLE},
    {"f", ArrayType::SINGLE},
    {"q", ArrayType::INT64},
    {"Q", ArrayType::UINT64},
    {"i", ArrayType::INT32},
    {"I", ArrayType::UINT32},
    {"h", ArrayType::INT16},
    {"H", ArrayType::UINT16},
    {"b", ArrayType::INT8},
    {"B", ArrayType::UINT8},
    {"?", ArrayType::LOGICAL},
    // Taken, never given: a type's first row names its format.
    {"l", ArrayType::INT64},
    {"L", ArrayType::UINT64},
};

}  // namespace

char* classid2format(quarna::data::ArrayType type)
{
    for (FormatRow& row : formats) {
        if (row.type == type) {
            return row.format;
        }
    }
    return nullptr;
}

int format2classid(const char* format, quarna::data::ArrayType& result)
{
    if (format == nullptr) {
        return -1;
    }
    for (FormatRow const& row : formats) {
        if (std::strcmp(row.format, format) == 0) {
            result = row.type;
            return 0;
        }
    }
    return -1;
}
