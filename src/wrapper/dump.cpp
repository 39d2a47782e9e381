// The whole state of a wrapper on a stream.
#include "wrapper/dump.h"

#include "data/element_dispatch.h"
#include "elements/element_load.h"
#include "wrapper/qd_array_wrapper.h"

#include <concepts>
#include <type_traits>

using namespace quarna;

namespace {

template <class T>
void writeElement(std::ostream& stream, T element)
{
    // Streams take no UTF-16 code unit; its number says as much.
    if constexpr (std::same_as<T, char16_t>) {
        stream << static_cast<unsigned>(element) << " ";
    } else {
        stream << element << " ";
    }
}

}  // namespace

void quarna::writeElements(std::ostream& stream, void const* block, long count, data::ArrayType type)
{
    data::visitElementType(type, [&]<class T>(std::type_identity<T>) {
        for (long i = 0; i < count; ++i) {
            writeElement(stream, loadElementAt<T>(block, i));
        }
    });
}

void quarna::writeLine(std::ostream& stream, const char* label, std::span<long const> values)
{
    stream << label << ": ";
    for (long const value : values) {
        stream << value << " ";
    }
    stream << std::endl;
}

void QDArrayWrapper::writeToOstream(std::ostream& stream) const
{
    stream << "QDA buffer: ";
    writeElements(stream, seenStore().elements(), getNumberOfElements(), type());
    stream << std::endl;
    writeLine(stream, "m_shape", shape());
    writeLine(stream, "m_bytewiseStrides", bytewiseStrides());
    writeLine(stream, "m_order", m_order);
    writeLine(stream, "m_isReadOnly", isReadOnly());
    writeLine(stream, "m_exports", m_exports);
    writeLine(stream, "m_nDim", getNumberOfDimensions());
    writeLine(stream, "m_numElems", getNumberOfElements());
    writeLine(stream, "m_bufferSizeInBytes", getBufferSizeInBytes());
    writeLine(stream, "m_elemSizeInBytes", getElementSizeInBytes());
    stream << "m_buf: ";
    writeElements(stream, buf(), getNumberOfElements(), type());
    stream << std::endl;
}
