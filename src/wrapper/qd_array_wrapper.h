// One array in the shape of the buffer protocol: its dimensions, byte strides and elements.
//
// An array that came from Python keeps its elements once. Python reads, writes and exports them where they lie, and
// clones share them until one side writes or is exported. A second place begins where a native consumer can see it:
// when the array's handle is given out, and at once for a handle that comes in. From then on a write goes to both. What
// a native consumer writes reaches Python at the next reshape, which ends the second place.
//
// A block whose address was given out stays where it is and is the one that Python reads, as a consumer may hold the
// address for as long as it holds the array. The wrapper knows nothing of subscripts. All arrays cut from one array
// share its wrapper, under the GIL.
#pragma once

#include "vocabulary/python.h"

#include "elements/element_load.h"
#include "elements/layout.h"
#include "vocabulary/export.h"
#include "wrapper/store.h"

#include <boost/smart_ptr/intrusive_ptr.hpp>
#include <boost/smart_ptr/intrusive_ref_counter.hpp>

#include <cstdint>
#include <iosfwd>
#include <memory>
#include <span>

namespace quarna {

/// The places that hold the elements of a wrapper, both its own. The second is null where there is but one.
template <class T>
struct WritableElements {
    void* read;
    void* seen;

    void set(long offset, T value) const
    {
        storeElementAt(read, offset, value);
        if (seen != nullptr) {
            storeElementAt(seen, offset, value);
        }
    }

    void setRun(long offset, long stride, std::span<T const> values) const
    {
        auto const count = static_cast<long>(values.size());
        storeRun(read, offset, count, stride, values.data());
        if (seen != nullptr) {
            storeRun(seen, offset, count, stride, values.data());
        }
    }

    /// From another block.
    void copyRun(void const* from, long fromOffset, long fromStride, long offset, long stride,
                 long count) const
    {
        quarna::copyRun<T>(from, fromOffset, fromStride, read, offset, stride, count);
        if (seen != nullptr) {
            quarna::copyRun<T>(from, fromOffset, fromStride, seen, offset, stride, count);
        }
    }
};

}  // namespace quarna

namespace QDArrayWrapperVisitors {

/// What is taken from an array: all of a real array, or one part of a complex one.
enum class OutputEnum : int { NONCOMPLEX = 0, REAL = 1, IMAG = 2 };

}  // namespace QDArrayWrapperVisitors

class QDArrayWrapper;
using QDArrayWrapperPtr = boost::intrusive_ptr<QDArrayWrapper>;

/// Functions that throw, throw what the client layer throws, and std::bad_alloc; the wrapper is then as it was.
class QDArrayWrapper : public boost::intrusive_ref_counter<QDArrayWrapper, boost::thread_unsafe_counter> {
public:
    /// An array that only Python holds. The order is 'F', or 'C' for an array that is stored row-major.
    explicit QDArrayWrapper(quarna::LooseArray&& array, char order = 'F');

    /// An array that a native consumer may hold, too. Throws TooManyElements if its sizes do not fit 63 bits, or if its
    /// shape contradicts its count.
    static QDArrayWrapperPtr ofSeenArray(quarna::data::Array array);

    QDArrayWrapper(QDArrayWrapper const&) = delete;
    QDArrayWrapper& operator=(QDArrayWrapper const&) = delete;
    ~QDArrayWrapper() = default;

    quarna::data::ArrayType type() const { return quarna::data::ArrayType{m_type}; }
    long getElementSizeInBytes() const { return static_cast<long>(quarna::data::elementSize(type())); }
    long getNumberOfElements() const;
    long getBufferSizeInBytes() const { return getNumberOfElements() * getElementSizeInBytes(); }
    int getNumberOfDimensions() const { return static_cast<int>(m_layout.shape().size()); }
    std::span<long const> shape() const { return m_layout.shape(); }
    std::span<long const> bytewiseStrides() const { return m_layout.strides(); }
    bool hasElements() const { return m_layout.hasElements(); }
    char getOrder() const { return m_order; }
    int isReadOnly() const { return 1; }

    /// The buffer format of the elements; null for a type without one.
    char* format() const;

    /// The elements that Python reads.
    void const* buf() const { return m_store.elements(); }

    /// The same at an address that stays for as long as the wrapper lives. Throws.
    void* pinnedBuf();

    /// The data array that is, or would be, native consumers' to see.
    quarna::data::Array const& array() const { return seenStore().array(); }

    /// The handle for native consumers, the same until the next reshape. Makes the place that they see. Throws.
    quarna::data::impl::ArrayImpl* seenHandle();

    /// The elements as they are now, for another array: shared as long as nobody writes, copied if this array's
    /// address was given out. Throws.
    quarna::LooseArray snapshot() const;

    long exportCount() const { return m_exports; }
    void incrementExportCount() { ++m_exports; }
    void decrementExportCount();

    /// How often the array was reshaped: what was subscripted under another count no longer fits the shape.
    unsigned long reshapeCount() const { return m_reshapes; }

    /// The position of an element in storage, counted in elements; missing indices are 0. -1 for more indices
    /// than dimensions, and for a position beyond 63 bits. The indices are not held against the shape.
    long getElementOffsetFromIndices(std::span<long const> indices) const;

    /// The places to write to, no longer shared with anyone. T is the element type. Throws.
    template <class T>
    quarna::WritableElements<T> writableElements();

    /// Stores one element; false with RuntimeError set for a position outside the array. Throws.
    template <class T>
    bool setElementFromIndices(std::span<long const> indices, T value);

    /// New dimensions with the same number of elements, which stay where they lie: what native consumers saw is what
    /// Python reads from then on, and copied only if the store is to stay. Nothing is exported. Throws.
    void reshape(std::span<long const> dims, char order);

    /// A new 1-by-N array of real elements in storage order, read from array(). Throw; std::runtime_error if there is
    /// no such part.
    quarna::LooseArray noncomplex() const;
    quarna::LooseArray real() const;
    quarna::LooseArray imag() const;

    /// All state, for native code that looks for a fault.
    QUARNA_EXPORT void writeToOstream(std::ostream& stream) const;

private:
    QDArrayWrapper(quarna::Store&& store, quarna::data::ArrayType type, std::span<long const> shape,
                   char order);

    quarna::Store const& seenStore() const { return m_seen != nullptr ? *m_seen : m_store; }
    void makeSeenStore();
    quarna::LooseArray extractContents(QDArrayWrapperVisitors::OutputEnum output) const;

    // Behind the count of holders, four bytes long: small fields first leave no gap.
    std::uint8_t m_type;
    char m_order;
    bool m_isPinned = false;  // the address of the store was given out
    quarna::Store m_store;
    std::unique_ptr<quarna::Store> m_seen;  // by native consumers; null if they have no handle
    long m_exports = 0;
    unsigned long m_reshapes = 0;
    quarna::Layout m_layout;
};
