// The whole state of an array on a stream.
#include "wrapper/dump.h"

#include "indexing/qcpp_py_array.h"

using namespace quarna;

namespace {

void writeItem(std::ostream& stream, IntegerIndexItem const& item)
{
    writeLine(stream, "m_index", item.m_index);
    writeLine(stream, "m_isNormalized", item.m_isNormalized);
}

void writeItem(std::ostream& stream, SliceIndexItem const& item)
{
    writeLine(stream, "m_start", item.m_start);
    writeLine(stream, "m_stop", item.m_stop);
    writeLine(stream, "m_step", item.m_step);
    writeLine(stream, "m_slice_len", item.m_slice_len);
    writeLine(stream, "m_isNormalized", item.m_isNormalized);
}

}  // namespace

void QCppPyArray::writeToOstream(std::ostream& stream) const
{
    stream << "QDArrayWrapper: " << std::endl;
    m_wrapper->writeToOstream(stream);
    stream << std::endl;
    writeLine(stream, "m_supportedArrayEnum", static_cast<int>(m_supportedArrayEnum));
    writeLine(stream, "m_isComplex", m_isComplex);
    for (std::size_t place = 0; place < m_indices.integerCount(); ++place) {
        writeItem(stream, m_indices.item(place));
    }
    if (holdsSlice()) {
        writeItem(stream, heldSlice());
    }
    writeLine(stream, "m_numberOfIntegerIndicesSoFar", getNumberOfIntegerIndicesSoFar());
    stream << "m_indexedArrayAsQDA: ";
    if (m_gathered == nullptr) {
        stream << "None" << std::endl;
        return;
    }
    LooseArray const& gathered = m_gathered->elements;
    auto const count = static_cast<long>(gathered.array.elementCount());
    writeElements(stream, gathered.array.address(gathered.type), count, gathered.type);
}
