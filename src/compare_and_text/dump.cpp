// The whole state of an array on a stream, for native code that looks for a fault.
#include "indexing/qcpp_py_array.h"
#include "wrapper/apply_numeric_visitor.h"
#include "wrapper/element_object.h"

#include <concepts>
#include <cstddef>
#include <ostream>
#include <variant>
#include <vector>

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

struct ArrayOstreamVisitor {
    std::ostream& stream;

    template <class T>
    void operator()(quarna::data::TypedArray<T> const& array) const
    {
        T const* const elements = array.elements();
        for (std::size_t i = 0; i < array.elementCount(); ++i) {
            writeElement(stream, quarna::loadElement<T>(elements + i));
        }
    }
};

struct BufOstreamVisitor {
    std::ostream& stream;
    void const* block;
    long count;

    template <class T>
    void operator()(quarna::data::TypedArray<T> const&) const
    {
        if (block == nullptr) {
            stream << "null" << std::endl;
            return;
        }
        for (long i = 0; i < count; ++i) {
            writeElement(stream, quarna::loadElement<T>(static_cast<T const*>(block) + i));
        }
    }
};

template <class Value>
void writeLine(std::ostream& stream, const char* label, Value const& value)
{
    stream << label << ": " << value << std::endl;
}

void writeLine(std::ostream& stream, const char* label, std::vector<long> const& values)
{
    stream << label << ": ";
    for (long const value : values) {
        stream << value << " ";
    }
    stream << std::endl;
}

struct IndexItemWriter {
    std::ostream& stream;

    void operator()(IntegerIndexItem const& item) const
    {
        writeLine(stream, "m_index", item.m_index);
        writeLine(stream, "m_isNormalized", item.m_isNormalized);
    }

    void operator()(SliceIndexItem const& item) const
    {
        writeLine(stream, "m_start", item.m_start);
        writeLine(stream, "m_stop", item.m_stop);
        writeLine(stream, "m_step", item.m_step);
        writeLine(stream, "m_slice_len", item.m_slice_len);
        writeLine(stream, "m_isNormalized", item.m_isNormalized);
    }
};

}  // namespace

void QDArrayWrapper::writeToOstream(std::ostream& stream) const
{
    using quarna::data::apply_numeric_visitor;
    stream << "QDA buffer: ";
    apply_numeric_visitor(m_array, ArrayOstreamVisitor{stream});
    stream << std::endl;
    writeLine(stream, "m_shape", m_shape);
    writeLine(stream, "m_bytewiseStrides", m_bytewiseStrides);
    writeLine(stream, "m_order", m_order);
    writeLine(stream, "m_isReadOnly", m_isReadOnly);
    writeLine(stream, "m_exports", m_exports);
    writeLine(stream, "m_nDim", getNumberOfDimensions());
    writeLine(stream, "m_numElems", m_numElems);
    writeLine(stream, "m_bufferSizeInBytes", m_bufferSizeInBytes);
    writeLine(stream, "m_elemSizeInBytes", m_elemSizeInBytes);
    stream << "m_buf: ";
    apply_numeric_visitor(m_array, BufOstreamVisitor{stream, m_buf.get(), m_numElems});
    stream << std::endl;
}

void QCppPyArray::writeToOstream(std::ostream& stream) const
{
    stream << "QDArrayWrapper: " << std::endl;
    m_wrapper->writeToOstream(stream);
    stream << std::endl;
    writeLine(stream, "m_supportedArrayEnum", static_cast<int>(m_supportedArrayEnum));
    writeLine(stream, "m_isComplex", m_isComplex);
    for (IndexItem const& item : m_indices) {
        std::visit(IndexItemWriter{stream}, item);
    }
    writeLine(stream, "m_numberOfIntegerIndicesSoFar", m_numberOfIntegerIndicesSoFar);
    stream << "m_indexedArrayAsQDA: ";
    if (m_indexedArrayAsQDA) {
        quarna::data::apply_numeric_visitor(*m_indexedArrayAsQDA, ArrayOstreamVisitor{stream});
    } else {
        stream << "None" << std::endl;
    }
}
