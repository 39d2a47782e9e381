// The walk over a nest of sequences.
#include "construction/nest_reader.h"

#include "construction/allocation.h"
#include "construction/plain_nest.h"
#include "construction/plain_row.h"
#include "construction/sequences.h"
#include "data/element_dispatch.h"
#include "elements/arithmetic.h"
#include "elements/element_load.h"
#include "elements/storage_order.h"
#include "numbers/element_runs.h"
#include "numbers/plain_number.h"
#include "vocabulary/errors.h"
#include "vocabulary/python_values.h"
#include "vocabulary/recursion.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <type_traits>
#include <utility>

namespace quarna {

namespace {

constexpr long unset = -1;

Refused refuseRagged()
{
    return refuse(PyExc_ValueError, "arrays must be rectangular.");
}

Refused refuseNestedVector()
{
    return refuse(PyExc_TypeError, "value of 'vector' must be an unnested sequence.");
}

/// The dimensions of the nest that a source stands for: lists without items hold no further lists.
std::span<StridedDimension const> nestingOf(StridedView const& view)
{
    std::span<StridedDimension const> const all(view.dimensions.data(), view.dimensions.size());
    auto const firstEmpty =
        std::find_if(all.begin(), all.end(), [](StridedDimension level) { return level.length == 0; });
    return firstEmpty == all.end() ? all : all.first(static_cast<std::size_t>(firstEmpty - all.begin()) + 1);
}

using ReadNumber = Number (*)(void const* block, long offset);

ReadNumber numberReader(ElementSource const& source)
{
    if (source.block == nullptr) {
        return [](void const*, long offset) { return numberFromElement<std::int64_t>(offset); };
    }
    return data::visitElementType(source.type, []<class U>(std::type_identity<U>) -> ReadNumber {
        return
            [](void const* block, long offset) { return numberFromElement(loadElementAt<U>(block, offset)); };
    });
}

}  // namespace

template <class T>
bool NestReader<T>::read(PyObject* object, bool coerceToLogical)
{
    m_coerceToLogical = coerceToLogical;
    if (Road const road = takeAtOnce(object); road != Road::Declined) {
        return road == Road::Taken;
    }
    if (!takeValue(object)) {
        return false;
    }
    if (checkedProduct(m_dims) != m_elementCount) {
        return refuseRagged();
    }
    return true;
}

template <class T>
bool NestReader<T>::readVector(PyObject* vector, Py_ssize_t count)
{
    if (!reserve(count)) {
        return false;
    }
    if (Road const road = takeAtOnce(vector); road != Road::Declined) {
        return road == Road::Taken && (m_dims.size() == 1 || refuseNestedVector());
    }
    // Whatever the kind of refusal, of these values it is a ValueError.
    m_refusalClass = PyExc_ValueError;
    MemoryElements const elements(vector);
    if (elements.source() && elements.source()->view.dimensions.size() == 1) {
        return storeElements(*elements.source(), count);
    }
    for (Py_ssize_t index = 0; index < count; ++index) {
        Reference const item = Reference::steal(PySequence_GetItem(vector, index));
        if (!item) {
            return refuseWith(PyExc_RuntimeError, "item ", index, " could not be retrieved.");
        }
        if (!takeVectorItem(item.get()) || !m_watch.passed(1)) {
            return false;
        }
    }
    return true;
}

template <class T>
Road NestReader<T>::takeAtOnce(PyObject* object)
{
    if (!exactItems(object).empty()) {
        return takePlainNest(object);
    }
    MemoryElements elements(object);
    return elements.source() && elements.source()->view.count() > 0 ? takeFromMemory(elements)
                                                                    : Road::Declined;
}

template <class T>
Road NestReader<T>::takePlainNest(PyObject* nest)
{
    auto shape = shapeOfPlainNest<T>(nest, m_coerceToLogical);
    if (shape.empty() || !reserveExactly(shape)) {
        return Road::Declined;
    }
    Road const road = readPlainNest<T>(nest, shape, m_coerceToLogical, m_elements.get());
    return takeIf(road, std::move(shape));
}

template <class T>
Road NestReader<T>::takeFromMemory(MemoryElements& elements)
{
    auto const& dimensions = elements.source()->view.dimensions;
    std::vector<long> shape(dimensions.size());
    std::transform(dimensions.begin(), dimensions.end(), shape.begin(),
                   [](StridedDimension dimension) { return dimension.length; });
    if (!reserveExactly(shape)) {
        return Road::Declined;
    }
    auto* const convert = runConverter<T>(*elements.source());
    Road road = Road::Taken;
    T* next = m_elements.get();
    walkRuns(elements.source()->view, WalkOrder::Stored, [&](long offset, long length, long stride) {
        while (length > 0 && road == Road::Taken) {
            long const count = std::min(length, m_watch.left());
            bool const isPlain =
                convert(elements.source()->block, offset, stride, count, next, m_coerceToLogical);
            bool const goesOn = isPlain && m_watch.passed(count) && elements.refresh();
            road = goesOn ? Road::Taken : isPlain ? Road::Failed : Road::Declined;
            next += count;
            offset += count * stride;
            length -= count;
        }
        return road == Road::Taken;
    });
    return takeIf(road, std::move(shape));
}

/// Makes room for so many elements and no more. A refusal is the walk's to raise, when it comes there.
template <class T>
bool NestReader<T>::reserveExactly(std::span<long const> shape)
{
    auto const count = checkedProduct(shape);
    if (reserve(count)) {
        return m_capacity == *count;
    }
    PyErr_Clear();
    m_hasNoRoom = true;
    return false;
}

template <class T>
Road NestReader<T>::takeIf(Road road, std::vector<long> shape)
{
    if (road == Road::Taken) {
        m_dims = std::move(shape);
        m_elementCount = m_capacity;
        m_order = WalkOrder::Stored;
    }
    return road;
}

template <class T>
bool NestReader<T>::takeVectorItem(PyObject* item)
{
    if (PySequence_Check(item)) {
        return refuseNestedVector();
    }
    return takeScalar(GetCValueFromPyObjFunctor<T>{}(item, m_coerceToLogical));
}

template <class T>
bool NestReader<T>::takeValue(PyObject* object)
{
    return PySequence_Check(object) ? takeSequence(object)
                                    : takeScalar(GetCValueFromPyObjFunctor<T>{}(object, m_coerceToLogical));
}

template <class T>
bool NestReader<T>::takeSequence(PyObject* sequence)
{
    if (pyObjectIsUnicodeOrString(sequence)) {
        return refuse(PyExc_ValueError, "value passed to initializer must be numeric.");
    }
    if (MemoryElements const elements(sequence); elements.source()) {
        return takeElements(*elements.source());
    }
    RecursionLevel const level(" while reading a nested sequence");
    if (!level) {
        return false;
    }
    auto const row = plainRow<T>(sequence, m_coerceToLogical);
    return row.empty() ? walkSequence(sequence) : takePlainRow(row);
}

// The same as a walk comes to. The numbers stay what they are: nothing here runs Python code.
template <class T>
bool NestReader<T>::takePlainRow(std::span<PyObject* const> items)
{
    auto const length = static_cast<long>(items.size());
    openSequence(length);
    if (!placeFirstScalar()) {
        return false;
    }
    if (length <= m_capacity - m_elementCount) {
        T* next = m_elements.get() + m_elementCount;
        for (PyObject* const item : items) {
            *next++ = plainElement<T>(item, m_coerceToLogical).value;
        }
    }
    m_elementCount += length;
    return closeSequence(length);
}

template <class T>
bool NestReader<T>::walkSequence(PyObject* sequence)
{
    auto const length = lengthOfUniformSequence(sequence);
    if (!length) {
        return false;
    }
    openSequence(*length);
    if (!takeItems(sequence, *length)) {
        return false;
    }
    return closeSequence(*length);
}

template <class T>
bool NestReader<T>::takeItems(PyObject* sequence, long length)
{
    Items const items(sequence);
    for (Py_ssize_t index = 0; index < length; ++index) {
        Reference const item = items.at(index);
        if (!item || !takeValue(item.get()) || !m_watch.passed(1)) {
            return false;
        }
    }
    return true;
}

// Lists would be walked only as far as the end of the first sequence whose length is not the known one.
template <class T>
long NestReader<T>::countBeforeRagged(std::span<StridedDimension const> levels) const
{
    std::size_t const depth = m_lengthsAtDepth.size();
    long count = 1;
    for (std::size_t level = levels.size(); level-- > 0;) {
        count *= levels[level].length;
        bool const isKnown = depth + level < m_dims.size() && m_dims[depth + level] != unset;
        if (isKnown && m_dims[depth + level] != levels[level].length) {
            break;
        }
    }
    return count;
}

template <class T>
bool NestReader<T>::takeElements(ElementSource const& source)
{
    auto const levels = nestingOf(source.view);
    long const count = countBeforeRagged(levels);
    for (StridedDimension const& level : levels) {
        openSequence(level.length);
    }
    if (count > 0 && !storeElements(source, count)) {
        return false;
    }
    return std::all_of(levels.rbegin(), levels.rend(),
                       [this](StridedDimension level) { return closeSequence(level.length); });
}

// The first element of a run tells whether there is room, and where scalars stand. The others are converted at once, or
// one by one to find what is refused.
template <class T>
bool NestReader<T>::storeElements(ElementSource const& source, long count)
{
    bool taken = true;
    ReadNumber const readNumber = numberReader(source);
    auto* const convert = runConverter<T>(source);
    walkRuns(source.view, WalkOrder::Nested, [&](long offset, long length, long stride) {
        length = std::min(length, count);
        count -= length;
        for (long i = 0; taken && i < length; ++i) {
            long const others = length - i;
            if (i == 1 && others <= m_capacity - m_elementCount &&
                convert(source.block, offset + stride, stride, others, m_elements.get() + m_elementCount,
                        m_coerceToLogical)) {
                m_elementCount += others;
                break;
            }
            Number const number = readNumber(source.block, offset + i * stride);
            taken = takeScalar(convertNumber<T>(number, m_coerceToLogical));
        }
        return taken && count > 0;
    });
    return taken;
}

template <class T>
std::span<T const> NestReader<T>::elementsInNestedOrder()
{
    if (m_order == WalkOrder::Stored && !hasOneOrderOnly(m_dims)) {
        // What is column-major for some lengths is row-major for their reverse.
        std::vector<long> const reversed(m_dims.rbegin(), m_dims.rend());
        auto nested = m_factory.createBuffer<T>(static_cast<std::size_t>(m_elementCount));
        convertRowMajorToColumnMajor(m_elements.get(), nested.get(), reversed, sizeof(T));
        m_elements = std::move(nested);
    }
    m_order = WalkOrder::Nested;
    return elements();
}

template <class T>
void NestReader<T>::openSequence(long length)
{
    if (m_dims.size() == m_lengthsAtDepth.size()) {
        m_dims.push_back(unset);
    }
    m_lengthsAtDepth.push_back(length);
}

template <class T>
bool NestReader<T>::closeSequence(long length)
{
    m_lengthsAtDepth.pop_back();
    long& known = m_dims[m_lengthsAtDepth.size()];
    if (known == unset) {
        known = length;
    }
    if (known != length) {
        return refuseRagged();
    }
    return true;
}

template <class T>
bool NestReader<T>::takeScalar(CValueResult<T> const& scalar)
{
    if (!scalar.value) {
        return refuse(m_refusalClass != nullptr ? m_refusalClass : scalar.exceptionType,
                      scalar.message.c_str());
    }
    // All scalars of a nest stand as deep as the first.
    bool const isInPlace = m_elementCount > 0 && m_scalarDepth == m_lengthsAtDepth.size();
    if (!isInPlace && !placeFirstScalar()) {
        return false;
    }
    store(*scalar.value);
    return true;
}

template <class T>
bool NestReader<T>::placeFirstScalar()
{
    if (m_elementCount > 0 && m_scalarDepth != m_lengthsAtDepth.size()) {
        return refuseRagged();
    }
    m_scalarDepth = m_lengthsAtDepth.size();
    if (m_dims.empty()) {
        m_dims = {1, 1};
    }
    // The length of every open sequence is known, so for a rectangular nest this is the number of elements.
    return reserve(checkedProduct(m_lengthsAtDepth));
}

template <class T>
void NestReader<T>::store(T value)
{
    if (m_elementCount < m_capacity) {
        m_elements[static_cast<std::size_t>(m_elementCount)] = value;
    }
    ++m_elementCount;
}

template <class T>
bool NestReader<T>::reserve(std::optional<long> count)
{
    if (m_isReserved) {
        return true;
    }
    if (m_hasNoRoom) {
        return refuseForMemory<T>(count);
    }
    m_isReserved = allocateOrRefuse<T>(count, [this](std::size_t room) {
        m_elements = m_factory.createBuffer<T>(room);
        m_capacity = static_cast<long>(room);
    });
    return m_isReserved;
}

#define QUARNA_ARRAY_TYPE(number, name, element) template class NestReader<element>;
#include "data/array_types.def"

}  // namespace quarna
