// The walk over a nest of sequences.
#include "construction/nest_reader.h"

#include "construction/allocation.h"
#include "construction/buffer_elements.h"
#include "construction/plain_row.h"
#include "construction/sequences.h"
#include "data/element_dispatch.h"
#include "elements/arithmetic.h"
#include "elements/element_load.h"
#include "indexing/array_source.h"
#include "numbers/plain_number.h"
#include "vocabulary/errors.h"
#include "vocabulary/python_values.h"
#include "vocabulary/recursion.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <span>
#include <type_traits>

namespace quarna {

namespace {

constexpr long unset = -1;

Refused refuseRagged()
{
    return refuse(PyExc_ValueError, "arrays must be rectangular.");
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

ReadNumber numberReader(data::ArrayType type)
{
    return data::visitElementType(type, []<class U>(std::type_identity<U>) -> ReadNumber {
        return
            [](void const* block, long offset) { return numberFromElement(loadElementAt<U>(block, offset)); };
    });
}

}  // namespace

template <class T>
bool NestReader<T>::read(PyObject* object, bool coerceToLogical)
{
    m_coerceToLogical = coerceToLogical;
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
    // Whatever the kind of refusal, of these values it is a ValueError.
    m_refusalClass = PyExc_ValueError;
    auto const elements = elementsOfArray(vector);
    if (elements && elements->view.dimensions.size() == 1) {
        return storeElements(*elements, count);
    }
    if (BufferElements const buffer(vector); buffer.source()) {
        return storeElements(*buffer.source(), count);
    }
    for (Py_ssize_t index = 0; index < count; ++index) {
        Reference const item = Reference::steal(PySequence_GetItem(vector, index));
        if (!item) {
            return refuseWith(PyExc_RuntimeError, "item ", index, " could not be retrieved.");
        }
        if (!takeVectorItem(item.get())) {
            return false;
        }
    }
    return true;
}

template <class T>
bool NestReader<T>::takeVectorItem(PyObject* item)
{
    if (PySequence_Check(item)) {
        return refuse(PyExc_TypeError, "value of 'vector' must be an unnested sequence.");
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
    if (auto const elements = elementsOfArray(sequence)) {
        return takeElements(*elements);
    }
    if (BufferElements const buffer(sequence); buffer.source()) {
        return takeElements(*buffer.source());
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
            *next++ = *plainElement<T>(item, m_coerceToLogical);
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
        if (!item || !takeValue(item.get())) {
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

template <class T>
bool NestReader<T>::storeElements(ElementSource const& source, long count)
{
    if (source.type != data::arrayTypeOf<T> || !survivesPythonNumber<T>) {
        return convertElements(source, count);
    }
    if (!placeFirstScalar()) {
        return false;
    }
    copyElements(source);
    return true;
}

template <class T>
bool NestReader<T>::convertElements(ElementSource const& source, long count)
{
    bool taken = true;
    ReadNumber const readNumber = numberReader(source.type);
    walkRuns(source.view, WalkOrder::Nested, [&](long offset, long length, long stride) {
        for (long i = 0; taken && i < length && count > 0; ++i, --count) {
            Number const number = readNumber(source.block, offset + i * stride);
            taken = takeScalar(convertNumber<T>(number, m_coerceToLogical));
        }
        return taken && count > 0;
    });
    return taken;
}

template <class T>
void NestReader<T>::copyElements(ElementSource const& source)
{
    long const count = source.view.count();
    if (count <= m_capacity - m_elementCount) {
        T* next = m_elements.get() + m_elementCount;
        walkRuns(source.view, WalkOrder::Nested, [&](long offset, long length, long stride) {
            next = loadRun(source.block, offset, length, stride, next);
            return true;
        });
    }
    m_elementCount += count;
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
    m_isReserved = allocateOrRefuse<T>(count, [this](std::size_t room) {
        m_elements = m_factory.createBuffer<T>(room);
        m_capacity = static_cast<long>(room);
    });
    return m_isReserved;
}

#define QUARNA_ARRAY_TYPE(number, name, element) template class NestReader<element>;
#include "data/array_types.def"

}  // namespace quarna
