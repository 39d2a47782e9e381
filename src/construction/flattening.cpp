// The walk over a nest of sequences.
#include "construction/element_conversion.h"
#include "construction/final_constructor_parser.h"
#include "vocabulary/arithmetic.h"
#include "vocabulary/class_table.h"
#include "vocabulary/errors.h"
#include "vocabulary/python_values.h"

#include <exception>
#include <limits>

using quarna::Reference;

namespace {

constexpr long unset = -1;
constexpr long scalar = -1;

bool refuse(PyObject* exceptionClass, const char* text)
{
    setError(exceptionClass, text);
    return false;
}

bool refuseRagged()
{
    return refuse(PyExc_ValueError, "arrays must be rectangular.");
}

// Lists and tuples give what PySequence_GetItem would, without the call; a list can have shrunk meanwhile.
Reference itemAt(PyObject* sequence, Py_ssize_t index)
{
    if (PyList_CheckExact(sequence) && index < PyList_GET_SIZE(sequence)) {
        return Reference::borrow(PyList_GET_ITEM(sequence, index));
    }
    if (PyTuple_CheckExact(sequence) && index < PyTuple_GET_SIZE(sequence)) {
        return Reference::borrow(PyTuple_GET_ITEM(sequence, index));
    }
    return Reference::steal(PySequence_GetItem(sequence, index));
}

/// The length of a child that is a sequence, `scalar` for another; empty with an exception set.
std::optional<long> lengthAsChild(PyObject* sequence, Py_ssize_t index)
{
    Reference const child = itemAt(sequence, index);
    if (!child) {
        return std::nullopt;
    }
    if (!PySequence_Check(child.get())) {
        return scalar;
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
    auto const first = lengthAsChild(sequence, 0);
    for (Py_ssize_t index = 1; first && index < length; ++index) {
        auto const child = lengthAsChild(sequence, index);
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
    return PySequence_Check(object) ? takeSequence(object) : takeScalar(object);
}

template <class T>
bool FinalConstructorParser<T>::takeSequence(PyObject* sequence)
{
    if (pyObjectIsUnicodeOrString(sequence)) {
        return refuse(PyExc_ValueError, "value passed to initializer must be numeric.");
    }
    quarna::RecursionLevel const level(" while reading a nested sequence");
    if (!level) {
        return false;
    }
    auto const length = lengthOfUniformSequence(sequence);
    if (!length) {
        return false;
    }
    if (m_calculatedDims.size() <= m_depth) {
        m_calculatedDims.push_back(unset);
    }
    m_lengthsAtDepth.push_back(*length);
    ++m_depth;
    for (Py_ssize_t index = 0; index < *length; ++index) {
        Reference const item = itemAt(sequence, index);
        if (!item || !takeValue(item.get())) {
            return false;
        }
    }
    return closeSequence(*length);
}

template <class T>
bool FinalConstructorParser<T>::closeSequence(long length)
{
    --m_depth;
    m_lengthsAtDepth.pop_back();
    long& known = m_calculatedDims[m_depth];
    if (known == unset) {
        known = length;
    }
    return known == length || refuseRagged();
}

template <class T>
bool FinalConstructorParser<T>::takeScalar(PyObject* object)
{
    auto const result = GetCValueFromPyObjFunctor<T>{}(object, m_coerceToLogical);
    if (!result.value) {
        return refuse(result.exceptionType, result.message.c_str());
    }
    if (m_scalarDepth == 0) {
        m_scalarDepth = m_depth;
    } else if (m_scalarDepth != m_depth) {
        return refuseRagged();
    }
    if (m_calculatedDims.empty()) {
        m_calculatedDims = {1, 1};
    }
    // The length of every open sequence is known, so for a rectangular nest this is the number of elements.
    if (!m_bufferReserved && !reserveBuffer(quarna::checkedProduct(m_lengthsAtDepth))) {
        return false;
    }
    store(*result.value);
    return true;
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
        quarna::setComposedError(PyExc_MemoryError, "unable to allocate memory for array with number of elements = ",
                                 shown, "; type = ", quarna::className<T>);
        return false;
    }
    m_capacity = *count;
    m_bufferReserved = true;
    return true;
}

#define QUARNA_ARRAY_TYPE(number, name, element) template class FinalConstructorParser<element>;
#include "data/array_types.def"
