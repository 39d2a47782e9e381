// The walk over a nest of sequences.
#include "construction/final_constructor_parser.h"
#include "data/element_dispatch.h"
#include "vocabulary/arithmetic.h"
#include "vocabulary/class_table.h"
#include "vocabulary/errors.h"
#include "vocabulary/python_values.h"
#include "vocabulary/recursion.h"
#include "wrapper/element_object.h"

#include <algorithm>
#include <cstddef>
#include <exception>
#include <limits>
#include <optional>
#include <span>
#include <type_traits>

using quarna::Reference;

namespace {

constexpr long unset = -1;
constexpr long noSequence = -1;

bool refuse(PyObject* exceptionClass, const char* text)
{
    setError(exceptionClass, text);
    return false;
}

bool refuseRagged()
{
    return refuse(PyExc_ValueError, "arrays must be rectangular.");
}

/// The items of a sequence by index, each held while it is looked at. Lists and tuples are read without the
/// detour through the sequence protocol; a list can have shrunk since its length was asked.
class Items {
public:
    explicit Items(PyObject* sequence)
        : m_sequence(sequence), m_isList(PyList_CheckExact(sequence)), m_isTuple(PyTuple_CheckExact(sequence))
    {}

    Reference at(Py_ssize_t index) const
    {
        if (m_isList && index < PyList_GET_SIZE(m_sequence)) {
            return Reference::borrow(PyList_GET_ITEM(m_sequence, index));
        }
        if (m_isTuple) {
            return Reference::borrow(PyTuple_GET_ITEM(m_sequence, index));
        }
        return Reference::steal(PySequence_GetItem(m_sequence, index));
    }

private:
    PyObject* m_sequence;
    bool m_isList;
    bool m_isTuple;
};

/// The length of a child that is a sequence, `noSequence` for another; empty with an exception set.
std::optional<long> lengthAsChild(Items const& items, Py_ssize_t index)
{
    Reference const child = items.at(index);
    if (!child) {
        return std::nullopt;
    }
    if (!PySequence_Check(child.get())) {
        return noSequence;
    }
    Py_ssize_t const length = PySequence_Size(child.get());
    return length < 0 ? std::nullopt : std::optional<long>(length);
}

/// The length of a sequence whose children are all scalars or all sequences of one length; empty with an
/// exception set.
std::optional<long> lengthOfUniformSequence(PyObject* sequence)
{
    Py_ssize_t const length = PySequence_Size(sequence);
    if (length < 0) {
        return std::nullopt;
    }
    if (length < 2) {
        return length;
    }
    Items const items(sequence);
    auto const first = lengthAsChild(items, 0);
    for (Py_ssize_t index = 1; first && index < length; ++index) {
        auto const child = lengthAsChild(items, index);
        if (!child) {
            return std::nullopt;
        }
        if (*child != *first) {
            refuse(PyExc_ValueError, "elements of array are of different lengths or types.");
            return std::nullopt;
        }
    }
    return first ? std::optional<long>(length) : std::nullopt;
}

/// The dimensions of the nest that a source stands for: lists without items hold no further lists.
std::span<quarna::StridedDimension const> nestingOf(quarna::StridedView const& view)
{
    std::span<quarna::StridedDimension const> const all(view.dimensions.data(), view.dimensions.size());
    auto const firstEmpty = std::find_if(all.begin(), all.end(),
                                         [](quarna::StridedDimension level) { return level.length == 0; });
    return firstEmpty == all.end() ? all : all.first(static_cast<std::size_t>(firstEmpty - all.begin()) + 1);
}

using ReadNumber = quarna::Number (*)(void const* block, long offset);

ReadNumber numberReader(quarna::data::ArrayType type)
{
    return quarna::data::visitElementType(type, []<class U>(std::type_identity<U>) -> ReadNumber {
        return [](void const* block, long offset) {
            return quarna::numberFromElement(quarna::loadElementAt<U>(block, offset));
        };
    });
}

}  // namespace

template <class T>
bool FinalConstructorParser<T>::flattenWithUnspecifiedDimensions(PyObject* object, bool coerceToLogical)
{
    m_coerceToLogical = coerceToLogical;
    if (!takeValue(object)) {
        return false;
    }
    return quarna::checkedProduct(m_calculatedDims) == m_elementCount || refuseRagged();
}

template <class T>
bool FinalConstructorParser<T>::takeValue(PyObject* object)
{
    return PySequence_Check(object) ? takeSequence(object)
                                    : takeScalar(GetCValueFromPyObjFunctor<T>{}(object, m_coerceToLogical));
}

template <class T>
bool FinalConstructorParser<T>::takeSequence(PyObject* sequence)
{
    if (pyObjectIsUnicodeOrString(sequence)) {
        return refuse(PyExc_ValueError, "value passed to initializer must be numeric.");
    }
    if (auto const elements = m_findElements(sequence)) {
        return takeElements(*elements);
    }
    if (quarna::BufferElements const buffer(sequence); buffer.source()) {
        return takeElements(*buffer.source());
    }
    return walkSequence(sequence);
}

template <class T>
bool FinalConstructorParser<T>::walkSequence(PyObject* sequence)
{
    quarna::RecursionLevel const level(" while reading a nested sequence");
    auto const length = level ? lengthOfUniformSequence(sequence) : std::nullopt;
    if (!length) {
        return false;
    }
    openSequence(*length);
    Items const items(sequence);
    for (Py_ssize_t index = 0; index < *length; ++index) {
        Reference const item = items.at(index);
        if (!item || !takeValue(item.get())) {
            return false;
        }
    }
    return closeSequence(*length);
}

template <class T>
bool FinalConstructorParser<T>::takeElements(quarna::ElementSource const& source)
{
    auto const levels = nestingOf(source.view);
    for (quarna::StridedDimension const& level : levels) {
        openSequence(level.length);
    }
    if (source.view.count() > 0 && !storeElements(source)) {
        return false;
    }
    return std::all_of(levels.rbegin(), levels.rend(),
                       [this](quarna::StridedDimension level) { return closeSequence(level.length); });
}

template <class T>
bool FinalConstructorParser<T>::storeElements(quarna::ElementSource const& source)
{
    if (source.type == quarna::data::arrayTypeOf<T> && quarna::survivesPythonNumber<T>) {
        return placeFirstScalar() && copyElements(source);
    }
    bool taken = true;
    ReadNumber const readNumber = numberReader(source.type);
    walkRuns(source.view, quarna::WalkOrder::Nested, [&](long offset, long length, long stride) {
        for (long i = 0; taken && i < length; ++i) {
            taken = takeScalar(
                quarna::convertNumber<T>(readNumber(source.block, offset + i * stride), m_coerceToLogical));
        }
        return taken;
    });
    return taken;
}

template <class T>
bool FinalConstructorParser<T>::copyElements(quarna::ElementSource const& source)
{
    long const count = source.view.count();
    if (count <= m_capacity - m_elementCount) {
        T* next = m_elements.get() + m_elementCount;
        walkRuns(source.view, quarna::WalkOrder::Nested, [&](long offset, long length, long stride) {
            next = quarna::loadRun(source.block, offset, length, stride, next);
            return true;
        });
    }
    m_elementCount += count;
    return true;
}

template <class T>
void FinalConstructorParser<T>::openSequence(long length)
{
    if (m_calculatedDims.size() == m_lengthsAtDepth.size()) {
        m_calculatedDims.push_back(unset);
    }
    m_lengthsAtDepth.push_back(length);
}

template <class T>
bool FinalConstructorParser<T>::closeSequence(long length)
{
    m_lengthsAtDepth.pop_back();
    long& known = m_calculatedDims[m_lengthsAtDepth.size()];
    if (known == unset) {
        known = length;
    }
    return known == length || refuseRagged();
}

template <class T>
bool FinalConstructorParser<T>::takeScalar(CValueResult<T> const& scalar)
{
    if (!scalar.value) {
        return refuse(m_refusalClass != nullptr ? m_refusalClass : scalar.exceptionType,
                      scalar.message.c_str());
    }
    // All scalars of a nest stand as deep as the first.
    if ((m_elementCount == 0 || m_scalarDepth != m_lengthsAtDepth.size()) && !placeFirstScalar()) {
        return false;
    }
    store(*scalar.value);
    return true;
}

template <class T>
bool FinalConstructorParser<T>::placeFirstScalar()
{
    if (m_elementCount > 0 && m_scalarDepth != m_lengthsAtDepth.size()) {
        return refuseRagged();
    }
    m_scalarDepth = m_lengthsAtDepth.size();
    if (m_calculatedDims.empty()) {
        m_calculatedDims = {1, 1};
    }
    // The length of every open sequence is known, so for a rectangular nest this is the number of elements.
    return m_bufferReserved || reserveBuffer(quarna::checkedProduct(m_lengthsAtDepth));
}

template <class T>
void FinalConstructorParser<T>::store(T value)
{
    if (m_elementCount < m_capacity) {
        m_elements[static_cast<std::size_t>(m_elementCount)] = value;
    }
    ++m_elementCount;
}

// A count beyond 63 bits shows as the largest that can be named.
template <class T>
bool FinalConstructorParser<T>::reserveBuffer(std::optional<long> count)
{
    unsigned long const shown =
        count ? static_cast<unsigned long>(*count) : std::numeric_limits<unsigned long>::max();
    try {
        m_elements = m_factory.createBuffer<T>(shown);
    } catch (std::exception const&) {
        quarna::setComposedError(PyExc_MemoryError,
                                 "unable to allocate memory for array with number of elements = ", shown,
                                 "; type = ", quarna::className<T>);
        return false;
    }
    m_capacity = *count;
    m_bufferReserved = true;
    return true;
}

#define QUARNA_ARRAY_TYPE(number, name, element) template class FinalConstructorParser<element>;
#include "data/array_types.def"
