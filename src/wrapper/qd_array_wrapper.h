// One data array in the shape of the buffer protocol: its dimensions, byte strides and a mirror of its elements.
//
// The mirror is a private copy of all element bytes. Reads go to it and cost no call into the library; a write
// goes to the data array first and then to the mirror, at the same offset. The wrapper knows nothing of
// subscripts. All arrays cut from one array share its wrapper.
#pragma once

#include "vocabulary/python.h"

#include "data/array_factory.h"
#include "vocabulary/export.h"

#include <cstdlib>
#include <cstring>
#include <iosfwd>
#include <memory>
#include <span>
#include <vector>

namespace quarna {

/// The two places that hold the elements of a wrapper, both writable. A block from outside need not be aligned.
template <class T>
struct WritableElements {
    void* stored;
    void* mirrored;

    void set(long offset, T value) const
    {
        for (void* const block : {stored, mirrored}) {
            std::memcpy(static_cast<unsigned char*>(block) + offset * long{sizeof(T)}, &value, sizeof(T));
        }
    }
};

struct FreeBlock {
    void operator()(void* block) const { std::free(block); }
};
using MirrorBlock = std::unique_ptr<void, FreeBlock>;

}  // namespace quarna

namespace QDArrayWrapperVisitors {

/// What is taken from an array: all of a real array, or one part of a complex one.
enum class OutputEnum : int { NONCOMPLEX = 0, REAL = 1, IMAG = 2 };

}  // namespace QDArrayWrapperVisitors

class QDArrayWrapper {
public:
    /// Throw what the client layer throws, std::bad_alloc without memory for the mirror, TooManyElements if
    /// the sizes do not fit 63 bits. The order is 'F', or 'C' for an array that is stored row-major.
    QDArrayWrapper(quarna::data::Array&& array, char order);
    QDArrayWrapper(quarna::data::Array const& array, char order);
    QDArrayWrapper(QDArrayWrapper const&) = delete;
    QDArrayWrapper& operator=(QDArrayWrapper const&) = delete;
    ~QDArrayWrapper() = default;

    quarna::data::Array const& array() const { return m_array; }
    void* buf() const { return m_buf.get(); }
    long getBufferSizeInBytes() const { return m_bufferSizeInBytes; }
    long getNumberOfElements() const { return m_numElems; }
    long getElementSizeInBytes() const { return m_elemSizeInBytes; }
    int getNumberOfDimensions() const { return static_cast<int>(m_shape.size()); }
    char getOrder() const { return m_order; }
    int isReadOnly() const { return m_isReadOnly; }
    std::vector<long> const& shape() const { return m_shape; }
    long const* bytewiseStrides() const { return m_bytewiseStrides.data(); }
    long const* suboffsets() const { return nullptr; }

    /// The buffer format of the data array's type, as the library names it now; null for a type without one.
    char* format() const;

    long exportCount() const { return m_exports; }
    void incrementExportCount() { ++m_exports; }
    void decrementExportCount();

    /// How often the array was reshaped: what was subscripted under another count no longer fits the shape.
    unsigned long reshapeCount() const { return m_reshapes; }

    /// The position of an element in storage, counted in elements; missing indices are 0. -1 for more indices
    /// than dimensions, and for a position beyond 63 bits. The indices are not held against the shape.
    long getElementOffsetFromIndices(std::span<long const> indices) const;

    /// A negative index counted from the end, with no lower bound; -999 for an index at or past the length.
    long normalizedIndex(long index, long dimension) const;

    /// Both places of the elements, the data array detached from other holders. T is the element type; throws
    /// ArrayTypeMismatch for another, and what the library's failure is, with nothing changed.
    template <class T>
    quarna::WritableElements<T> writableElements();

    /// Stores one element; false with RuntimeError set for a position outside the array.
    template <class T>
    bool setElementFromIndices(std::span<long const> indices, T value);

    /// The element in the data array, past the mirror, as a new Python number; null and no exception for an
    /// offset outside the array.
    PyObject* getElementAsPyObjectFromElementOffset(long offset) const;

    /// New dimensions with the same number of elements, which stay in storage order. The data array and the
    /// mirror are made anew; throws as the constructors do, and then the array is what it was.
    void reshape(std::vector<long> const& dims, quarna::data::ArrayFactory& factory, char order,
                 quarna::data::MemoryLayout layout);

    /// A new 1-by-N array of real elements in storage order, read from the data array.
    quarna::data::Array noncomplex(quarna::data::ArrayFactory& factory) const;
    quarna::data::Array real(quarna::data::ArrayFactory& factory) const;
    quarna::data::Array imag(quarna::data::ArrayFactory& factory) const;

    /// All state, for native code that looks for a fault.
    QUARNA_EXPORT void writeToOstream(std::ostream& stream) const;

private:
    void init();
    quarna::data::Array extractContents(quarna::data::ArrayFactory& factory,
                                        QDArrayWrapperVisitors::OutputEnum output) const;

    quarna::data::Array m_array;
    std::vector<long> m_shape;
    std::vector<long> m_bytewiseStrides;
    char m_order;
    int m_isReadOnly = 1;
    long m_exports = 0;
    unsigned long m_reshapes = 0;
    long m_numElems = 0;
    long m_bufferSizeInBytes = 0;
    long m_elemSizeInBytes = 0;
    quarna::MirrorBlock m_buf;
};
