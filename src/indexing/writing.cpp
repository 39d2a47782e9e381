// Assignment through subscripts.
#include "construction/final_constructor_parser.h"
#include "indexing/array_source.h"
#include "indexing/qcpp_py_array.h"
#include "vocabulary/errors.h"

#include <algorithm>
#include <cstddef>
#include <span>
#include <vector>

namespace {

int fail(PyObject* exceptionClass, const char* text)
{
    setError(exceptionClass, text);
    return -1;
}

int failForShape()
{
    return fail(PyExc_ValueError,
                "unable to perform assignment because the left and right sides have a different shape.");
}

/// Stores as many elements as there are on both sides, in nested order. The library is asked for its storage
/// once, and nothing fails after that.
template <class T>
void store(QDArrayWrapper& wrapper, quarna::StridedView const& target, std::span<T const> elements)
{
    auto next = elements.begin();
    if (elements.empty() || target.count() == 0) {
        return;
    }
    auto const writable = wrapper.writableElements<T>();
    walkRuns(target, quarna::WalkOrder::Nested, [&](long offset, long length, long stride) {
        long const count = std::min<long>(length, elements.end() - next);
        for (long i = 0; i < count; ++i) {
            writable.set(offset + i * stride, *next++);
        }
        return next != elements.end();
    });
}

bool haveSameShape(quarna::StridedDimensions const& dimensions, std::vector<long> const& lengths)
{
    return std::equal(
        dimensions.begin(), dimensions.end(), lengths.begin(), lengths.end(),
        [](quarna::StridedDimension dimension, long length) { return dimension.length == length; });
}

}  // namespace

template <class T>
bool QCppPyArray::readRightSide(FinalConstructorParser<T>& parser, PyObject* value) const
{
    unsigned long const reshapes = m_wrapper->reshapeCount();
    return parser.flattenWithUnspecifiedDimensions(value, false) && requireReshapeCount(reshapes);
}

template <class T>
int QCppPyArray::setItemsFromFinalOrNonFinalIntegerIndex(long index, long length, PyObject* value)
{
    IntegerIndexItem item{index};
    if (!item.normalizeAgainstLength(length)) {
        quarna::setIndexError(index);
        return -1;
    }
    if (!convertSliceAndIntegerToInteger(item)) {
        return -1;
    }
    return nextIntegerIsFinal() ? setItemViaFinalIntegerIndex<T>(item.m_index, value)
                                : setMultipleElementsFromNonFinalIntegerIndex<T>(item.m_index, value);
}

template <class T>
int QCppPyArray::setItemViaFinalIntegerIndex(long index, PyObject* value)
{
    auto const result = GetCValueFromPyObjFunctor<T>{}(value, false);
    if (!result.value) {
        return fail(result.exceptionType, result.message.c_str());
    }
    boost::container::small_vector<long, 8> position;
    for (std::size_t place = 0; place < static_cast<std::size_t>(m_numberOfIntegerIndicesSoFar); ++place) {
        position.push_back(integerAt(place));
    }
    position.push_back(index);
    return m_wrapper->setElementFromIndices<T>({position.data(), position.size()}, *result.value) ? 0 : -1;
}

template <class T>
int QCppPyArray::setMultipleElementsFromNonFinalIntegerIndex(long index, PyObject* value)
{
    FinalConstructorParser<T> parser(&quarna::elementsOfArray);
    if (!readRightSide(parser, value)) {
        return -1;
    }
    quarna::StridedView const target = selectionWith(IntegerIndexItem{index});
    if (!haveSameShape(target.dimensions, parser.calculatedDims())) {
        return failForShape();
    }
    store(*m_wrapper, target, parser.elements());
    return 0;
}

template <class T>
int QCppPyArray::setIndividualElementsFromFlatSeqOfMultipleIntegerIndices(SliceIndexItem const& item,
                                                                          PyObject* value)
{
    FinalConstructorParser<T> parser(&quarna::elementsOfArray);
    if (!readRightSide(parser, value)) {
        return -1;
    }
    quarna::StridedView const target = selectionWith(item);
    if (!haveSameShape(target.dimensions, parser.calculatedDims())) {
        return failForShape();
    }
    store(*m_wrapper, target, parser.elements());
    return 0;
}

template <class T>
int QCppPyArray::setMultipleElementsFromNonFinalSliceIndex(SliceIndexItem item, PyObject* value)
{
    constexpr char emptySliceText[] = "slice is empty, but number of elements assigned is greater than zero.";
    FinalConstructorParser<T> parser(&quarna::elementsOfArray);
    if (!readRightSide(parser, value)) {
        return -1;
    }
    if (parser.elements().empty()) {
        return item.isEmpty() ? 0 : fail(PyExc_ValueError, "slice is nonempty but values are empty.");
    }
    if (item.isEmpty()) {
        return fail(PyExc_ValueError, emptySliceText);
    }
    if (!convertSliceAndSliceToSlice(item)) {
        return -1;
    }
    if (item.isEmpty()) {
        return fail(PyExc_ValueError, emptySliceText);
    }
    quarna::StridedView const target = selectionWith(item);
    store(*m_wrapper, target, parser.elements());
    if (target.count() != static_cast<long>(parser.elements().size())) {
        return fail(PyExc_ValueError, "length of slice does not match number of elements.");
    }
    return 0;
}

#define QUARNA_ARRAY_TYPE(number, name, element)                                                       \
    template int QCppPyArray::setItemsFromFinalOrNonFinalIntegerIndex<element>(long, long, PyObject*); \
    template int QCppPyArray::setIndividualElementsFromFlatSeqOfMultipleIntegerIndices<element>(       \
        SliceIndexItem const&, PyObject*);                                                             \
    template int QCppPyArray::setMultipleElementsFromNonFinalSliceIndex<element>(SliceIndexItem, PyObject*);
#include "data/array_types.def"
