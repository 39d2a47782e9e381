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

#include "indexing/index_items.h"
#include "vocabulary/class_table.h"
#include "vocabulary/export.h"
#include "wrapper/qd_array_wrapper.h"
#include "wrapper/strided_view.h"

#include <cstddef>
#include <iosfwd>
#include <memory>
#include <optional>
#include <string>
#include <variant>

template <class T>
class FinalConstructorParser;

class QCppPyArray {
public:
    /// A full array with a wrapper of its own, whose storage is row-major if not column-major.
    QCppPyArray(quarna::data::Array&& array, SupportedArrayEnum arrayClass, bool isComplex,
                bool columnMajor = true);
    /// The same array once more, without its cache.
    QCppPyArray(QCppPyArray const& other);
    /// One subscript further: `item` is normalised and takes the place of a slice that `parent` holds.
    QCppPyArray(QCppPyArray const& parent, IndexItem const& item);
    /// The source of an iteration: a copy whose integers, like those that the iteration adds, do not count as
    /// normalised.
    static QCppPyArray forIteration(QCppPyArray const& other);
    QCppPyArray& operator=(QCppPyArray const&) = delete;
    ~QCppPyArray() = default;

    QDArrayWrapper* getQDAWrapper() const { return m_wrapper.get(); }
    SupportedArrayEnum getSupportedArrayEnum() const { return m_supportedArrayEnum; }
    bool isComplex() const { return m_isComplex; }
    IndexItems const& indices() const { return m_indices; }
    bool indicesAreEmpty() const { return m_indices.empty(); }

    /// Of the whole array, whatever the indices restrict.
    long getNumberOfDimensions() const { return m_wrapper->getNumberOfDimensions(); }
    long getNumberOfElements() const { return m_wrapper->getNumberOfElements(); }

    long getNumberOfIntegerIndicesSoFar() const { return m_numberOfIntegerIndicesSoFar; }
    bool nextIntegerIsFinal() const { return m_numberOfIntegerIndicesSoFar == getNumberOfDimensions() - 1; }
    SliceIndexItem const* heldSlice() const;
    bool sliceInFinalPreexistingPosition() const { return heldSlice() != nullptr; }

    /// False if the array is stale, or if no dimension is left to subscript.
    bool isUsable() const { return isCurrent() && m_numberOfIntegerIndicesSoFar < getNumberOfDimensions(); }
    bool requireUsable() const;
    /// False if the wrapper was reshaped since it had this count of reshapes.
    bool requireReshapeCount(unsigned long reshapes) const;

    /// What len() reports; -1 if the array is not usable.
    long getLengthOfActiveDimension() const;
    /// The length of the active dimension without regard to a held slice.
    long fullLengthOfActiveDimension() const;

    /// Turns a position in the active dimension into an index of the dimension; false past a held slice's end. An
    /// index that took a slice's place no longer counts as normalised.
    bool convertSliceAndIntegerToInteger(IntegerIndexItem& item) const;
    /// Turns a new slice into the one that takes a held slice's place; false if either step is negative.
    bool convertSliceAndSliceToSlice(SliceIndexItem& item) const;

    /// The selected elements, with one dimension for each that is open. The array is usable.
    quarna::StridedView selection() const;
    /// The selection of the array that one more subscript gives.
    quarna::StridedView selectionWith(IndexItem const& item) const;

    /// The element at an index of the last dimension, as a new Python number; the integers so far name the rest.
    template <class T>
    PyObject* getNumericPyObject(long index) const;

    /// A new nested list of what is selected, the active dimension outermost.
    template <class T>
    PyObject* getAllContentsAsPyList() const;

    /// Assignment: 0, or -1 with nothing written unless the function says otherwise. The right side is read in
    /// full before the array is looked at, since Python code may run meanwhile.
    ///
    /// An integer subscript as Python gave it, tried against the full `length` of the dimension.
    template <class T>
    int setItemsFromFinalOrNonFinalIntegerIndex(long index, long length, PyObject* value);
    /// A slice of the last dimension, whose right side is flat.
    template <class T>
    int setIndividualElementsFromFlatSeqOfMultipleIntegerIndices(SliceIndexItem const& item, PyObject* value);
    /// A slice with dimensions behind it, whose right side has any nesting. If the counts disagree, the leading
    /// elements have been written when it fails.
    template <class T>
    int setMultipleElementsFromNonFinalSliceIndex(SliceIndexItem item, PyObject* value);

    /// A data array of exactly what is selected, made once and kept: later calls give the first one, whatever
    /// was written or asked for since. One open dimension of N elements becomes 1-by-N if `asRowVector`. Empty
    /// for an element that does not survive its way through a Python number.
    template <class T>
    std::optional<quarna::data::Array> getIndexedArrayAsQDA(bool asRowVector);

    /// The elements or their parts, of the whole array, as a new 1-by-N data array; empty if the array is
    /// complex, or is not.
    std::optional<quarna::data::Array> noncomplex() const;
    std::optional<quarna::data::Array> realOrImag(bool wantReal) const;

    /// Whether both have one class, nest alike and hold numbers that Python calls equal; empty if one is stale.
    /// Real is the real element of this array's class.
    template <class Real>
    std::optional<bool> isEqualTo(QCppPyArray const& other) const;

    /// The nested list as Python prints it, without blanks or with them, as a constructor call if `asRepr`.
    template <class T>
    std::optional<std::string> getStrAsStdString(bool asRepr, bool keepBlanks) const;

    /// All state, for native code that looks for a fault.
    QUARNA_EXPORT void writeToOstream(std::ostream& stream) const;

private:
    bool isCurrent() const { return indicesAreEmpty() || m_wrapper->reshapeCount() == m_reshapes; }
    long integerAt(std::size_t place) const { return std::get<IntegerIndexItem>(m_indices[place]).m_index; }
    long elementStride(std::size_t dimension) const;
    long offsetOfIntegers() const;
    void appendOpenDimensions(quarna::StridedView& view) const;

    template <class T>
    int setItemViaFinalIntegerIndex(long index, PyObject* value);
    template <class T>
    int setMultipleElementsFromNonFinalIntegerIndex(long index, PyObject* value);
    template <class T>
    bool readRightSide(FinalConstructorParser<T>& parser, PyObject* value) const;
    template <class T>
    std::optional<quarna::data::Array> gather(bool asRowVector) const;

    std::shared_ptr<QDArrayWrapper> m_wrapper;
    SupportedArrayEnum m_supportedArrayEnum;
    bool m_isComplex;
    IndexItems m_indices;
    long m_numberOfIntegerIndicesSoFar = 0;
    unsigned long m_reshapes;  // the wrapper's count when the items were tried against its shape
    std::optional<quarna::data::Array> m_indexedArrayAsQDA;
};
