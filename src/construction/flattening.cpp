// The walk over a nest of sequences.
#include "construction/final_constructor_parser.h"
#include "data/element_dispatch.h"
#include "data/exceptions.h"
#include "vocabulary/arithmetic.h"
#include "vocabulary/class_table.h"
#include "vocabulary/errors.h"
#include "vocabulary/python_values.h"
#include "vocabulary/recursion.h"
#include "wrapper/element_object.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <new>
#include <optional>
#include <span>
#include <type_traits>

using quarna::Reference;

namespace {

constexpr long unset = -1;

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

enum class Likeness { Alike, Different, Unknown };

/// Whether a child is what the first one was, a scalar or a sequence of this length. Unknown with an exception set.
Likeness compareChild(PyObject* child, std::optional<long> lengthOfFirst)
{
    bool const isSequence = PySequence_Check(child) != 0;
    if (!isSequence || !lengthOfFirst) {
        return isSequence == lengthOfFirst.has_value() ? Likeness::Alike : Likeness::Different;
    }
    Py_ssize_t const length = PySequence_Size(child);
    if (length < 0) {
        return Likeness::Unknown;
    }
    return length == *lengthOfFirst ? Likeness::Alike : Likeness::Different;
}

/// Whether the children are all scalars, or all sequences of one length; false with an exception set.
bool requireUniformChildren(PyObject* sequence, Py_ssize_t count)
{
    Items const items(sequence);
    std::optional<long> lengthOfFirst;
    for (Py_ssize_t index = 0; index < count; ++index) {
        Reference const child = items.at(index);
        if (!child) {
            return false;
        }
        if (index == 0 && PySequence_Check(child.get())) {
            lengthOfFirst = PySequence_Size(child.get());
            if (*lengthOfFirst < 0) {
                return false;
            }
        } else if (Likeness const likeness = compareChild(child.get(), lengthOfFirst);
                   likeness != Likeness::Alike) {
            return likeness == Likeness::Different &&
                   refuse(PyExc_ValueError, "elements of array are of different lengths or types.");
        }
    }
    return true;
}

/// The length of a sequence whose children are uniform; empty with an exception set.
std::optional<long> lengthOfUniformSequence(PyObject* sequence)
{
    Py_ssize_t const length = PySequence_Size(sequence);
    // The only child of a sequence has nothing to be compared with, and is not asked.
    bool const isUniform = length >= 0 && (length < 2 || requireUniformChildren(sequence, length));
    return isUniform ? std::optional<long>(length) : std::nullopt;
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

// Lists would be walked only as far as the end of the first sequence whose length is not the known one.
template <class T>
long FinalConstructorParser<T>::countBeforeRagged(std::span<quarna::StridedDimension const> levels) const
{
    std::size_t const depth = m_lengthsAtDepth.size();
    long count = 1;
    for (std::size_t level = levels.size(); level-- > 0;) {
        count *= levels[level].length;
        bool const isKnown =
            depth + level < m_calculatedDims.size() && m_calculatedDims[depth + level] != unset;
        if (isKnown && m_calculatedDims[depth + level] != levels[level].length) {
            break;
        }
    }
    return count;
}

template <class T>
bool FinalConstructorParser<T>::takeElements(quarna::ElementSource const& source)
{
    auto const levels = nestingOf(source.view);
    long const count = countBeforeRagged(levels);
    for (quarna::StridedDimension const& level : levels) {
        openSequence(level.length);
    }
    if (count > 0 && !storeElements(source, count)) {
        return false;
    }
    return std::all_of(levels.rbegin(), levels.rend(),
                       [this](quarna::StridedDimension level) { return closeSequence(level.length); });
}

template <class T>
bool FinalConstructorParser<T>::storeElements(quarna::ElementSource const& source, long count)
{
    if (source.type == quarna::data::arrayTypeOf<T> && quarna::survivesPythonNumber<T>) {
        return placeFirstScalar() && copyElements(source);
    }
    bool taken = true;
    ReadNumber const readNumber = numberReader(source.type);
    walkRuns(source.view, quarna::WalkOrder::Nested, [&](long offset, long length, long stride) {
        for (long i = 0; taken && i < length && count > 0; ++i, --count) {
            taken = takeScalar(
                quarna::convertNumber<T>(readNumber(source.block, offset + i * stride), m_coerceToLogical));
        }
        return taken && count > 0;
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

template <class T>
bool FinalConstructorParser<T>::refuseForMemory(std::optional<long> count) const
{
    // A count beyond 63 bits shows as the largest that can be named.
    unsigned long const shown =
        count ? static_cast<unsigned long>(*count) : std::numeric_limits<unsigned long>::max();
    quarna::setComposedError(PyExc_MemoryError,
                             "unable to allocate memory for array with number of elements = ", shown,
                             "; type = ", quarna::className<T>);
    return false;
}

template <class T>
bool FinalConstructorParser<T>::reserveBuffer(std::optional<long> count)
{
    using quarna::data::ExceptionType;
    using quarna::data::detail::DataException;
    if (!count || !quarna::checkedProduct(*count, sizeof(T))) {
        return refuseForMemory(count);
    }
    try {
        m_elements = m_factory.createBuffer<T>(static_cast<std::size_t>(*count));
    } catch (std::bad_alloc const&) {
        return refuseForMemory(count);
    } catch (DataException<ExceptionType::OutOfMemory> const&) {
        return refuseForMemory(count);
    } catch (DataException<ExceptionType::TooManyElements> const&) {
        return refuseForMemory(count);
    }
    m_capacity = *count;
    m_bufferReserved = true;
    return true;
}

#define QUARNA_ARRAY_TYPE(number, name, element) template class FinalConstructorParser<element>;
#include "data/array_types.def"
