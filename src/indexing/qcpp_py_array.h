// The native object behind every array object: a shared wrapper, and the subscripts so far.
//
// A full array has no index items; a partial array has integers, then at most one slice, and shares the wrapper
// with the array that it was cut from. The active dimension is the one after the integers: the next subscript
// applies to it, with a slice that restricts it or not. A final integer is one for the last dimension; it names
// an element, so no array holds as many integers as there are dimensions. The items are never changed.
//
// Items were tried against the shape of their time. After a reshape of the wrapper they mean nothing, and the
// array is stale; a full array never is. Functions that report failure do it with a Python exception set.
#pragma once

#include "vocabulary/python.h"

#include "elements/index_items.h"
#include "elements/strided_view.h"
#include "vocabulary/class_table.h"
#include "vocabulary/export.h"
#include "wrapper/qd_array_wrapper.h"

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <optional>

class QCppPyArray {
public:
    /// A full array.
    QCppPyArray(QDArrayWrapperPtr wrapper, quarna::SupportedArrayEnum arrayClass, bool isComplex);
    /// One subscript further: `parent` is usable, `item` is normalised and takes the place of a slice that `parent`
    /// holds.
    QCppPyArray(QCppPyArray const& parent, quarna::IntegerIndexItem const& item);
    QCppPyArray(QCppPyArray const& parent, quarna::SliceIndexItem const& item);
    /// The source of an iteration over a usable array: a copy without the slice, whose integers, like those that the
    /// iteration adds, do not count as normalised.
    static QCppPyArray forIteration(QCppPyArray const& other);
    QCppPyArray(QCppPyArray const&) = delete;
    QCppPyArray& operator=(QCppPyArray const&) = delete;
    ~QCppPyArray() = default;

    QDArrayWrapper* getQDAWrapper() const { return m_wrapper.get(); }
    quarna::SupportedArrayEnum getSupportedArrayEnum() const { return m_supportedArrayEnum; }
    bool isComplex() const { return m_isComplex; }
    bool indicesAreEmpty() const { return m_indices.isEmpty(); }

    /// Of the whole array, whatever the indices restrict.
    long getNumberOfDimensions() const { return m_wrapper->getNumberOfDimensions(); }
    long getNumberOfElements() const { return m_wrapper->getNumberOfElements(); }

    long getNumberOfIntegerIndicesSoFar() const { return static_cast<long>(m_indices.integerCount()); }
    long integerAt(std::size_t place) const { return m_indices.integerAt(place); }
    bool nextIntegerIsFinal() const
    {
        return getNumberOfIntegerIndicesSoFar() == getNumberOfDimensions() - 1;
    }
    bool holdsSlice() const { return m_indices.hasSlice(); }
    /// There is one.
    quarna::SliceIndexItem heldSlice() const { return m_indices.slice(); }

    /// False if the array is stale, or if no dimension is left to subscript.
    bool isUsable() const
    {
        return isCurrent() && getNumberOfIntegerIndicesSoFar() < getNumberOfDimensions();
    }
    bool requireUsable() const { return isUsable() || refuseUse(); }
    /// False if the wrapper was reshaped since it had this count of reshapes.
    bool requireReshapeCount(unsigned long reshapes) const;
    /// The same since this array was made, which a full array allows.
    bool requireUnreshaped() const
    {
        return m_wrapper->reshapeCount() == m_reshapes || requireReshapeCount(m_reshapes);
    }

    /// What len() reports; -1 if the array is not usable.
    long getLengthOfActiveDimension() const
    {
        if (!requireUsable()) {
            return -1;
        }
        return holdsSlice() ? m_indices.sliceLength() : fullLengthOfActiveDimension();
    }
    /// The length of the active dimension without regard to a held slice.
    long fullLengthOfActiveDimension() const { return m_wrapper->shape()[activeDimension()]; }

    /// Turns a position in the active dimension into an index of the dimension; false past a held slice's end. An
    /// index that took a slice's place no longer counts as normalised.
    bool convertSliceAndIntegerToInteger(quarna::IntegerIndexItem& item) const
    {
        return !holdsSlice() || takePlaceOfSlice(item);
    }
    /// Turns a new slice into the one that takes a held slice's place; false if either step is negative.
    bool convertSliceAndSliceToSlice(quarna::SliceIndexItem& item) const;

    /// The selected elements, with one dimension for each that is open. The array is usable.
    quarna::StridedView selection() const;
    /// The selection of the array that one more subscript gives.
    quarna::StridedView selectionWith(quarna::IntegerIndexItem const& item) const;
    quarna::StridedView selectionWith(quarna::SliceIndexItem const& item) const;

    /// Where the element at an index of the last dimension lies; the integers so far name the rest.
    long byteOffsetOf(long index) const
    {
        return m_byteOffset + index * m_wrapper->bytewiseStrides()[activeDimension()];
    }
    void const* addressOf(long index) const
    {
        return static_cast<unsigned char const*>(m_wrapper->buf()) + byteOffsetOf(index);
    }

    /// That element as a new Python number.
    template <class T>
    PyObject* getNumericPyObject(long index) const;

    /// A new nested list of what is selected, the active dimension outermost.
    PyObject* getAllContentsAsPyList() const;

    /// A new wrapper of exactly what is selected, for an independent array. The elements are gathered once and kept, so
    /// that later ones are as the first, whatever was written or reshaped since. Null for an element that does not
    /// survive its way through a Python number.
    QDArrayWrapperPtr wrapperOfGathered();

    /// The handle for native consumers: the whole array's own, or that of the gathered elements of a partial array,
    /// one open dimension of N elements as 1-by-N. The same at every call. Null for an element as above.
    quarna::data::impl::ArrayImpl* seenHandle();

    /// The elements or their parts, of the whole array, as a new 1-by-N array; empty if the array is complex, or is
    /// not.
    std::optional<quarna::LooseArray> noncomplex() const;
    std::optional<quarna::LooseArray> realOrImag(bool wantReal) const;

    /// All state, for native code that looks for a fault.
    QUARNA_EXPORT void writeToOstream(std::ostream& stream) const;

private:
    struct Gathered {
        quarna::LooseArray elements;
        bool isSeen;  // a native consumer has its handle, so no other array reads it where it lies
    };

    template <class... Items>
    QCppPyArray(QCppPyArray const& family, long byteOffset, Items const&... items);

    bool isCurrent() const { return indicesAreEmpty() || m_wrapper->reshapeCount() == m_reshapes; }
    bool refuseUse() const;
    bool takePlaceOfSlice(quarna::IntegerIndexItem& item) const;
    std::size_t activeDimension() const { return m_indices.integerCount(); }
    long bytesTo(long index) const;
    long elementStride(std::size_t dimension) const;
    long offsetOfIntegers() const;
    void appendOpenDimensions(quarna::StridedView& view) const;
    bool gatherOnce(bool asRowVector);

    QDArrayWrapperPtr m_wrapper;
    unsigned long m_reshapes;  // the wrapper's count when the items were tried against its shape
    std::unique_ptr<Gathered> m_gathered;
    long m_byteOffset = 0;  // of the first element behind the integers
    [[no_unique_address]] quarna::IndexItems m_indices;
    quarna::SupportedArrayEnum m_supportedArrayEnum;
    bool m_isComplex;
};
