// The forms of a constructor call: nothing, 'size', an initializer, both, or 'vector'.
#include "construction/final_constructor_parser.h"
#include "vocabulary/arithmetic.h"
#include "vocabulary/errors.h"
#include "vocabulary/python_values.h"
#include "wrapper/storage_order.h"

#include <algorithm>
#include <optional>
#include <utility>
#include <vector>

using quarna::Reference;

namespace {

bool refuse(PyObject* exceptionClass, const char* text)
{
    setError(exceptionClass, text);
    return false;
}

void dropTrailingOnes(std::vector<long>& dims)
{
    while (dims.size() > 2 && dims.back() == 1) {
        dims.pop_back();
    }
}

/// One entry of 'size'; empty with an exception set.
std::optional<long> dimensionAt(PyObject* size, Py_ssize_t index)
{
    Reference const item = Reference::steal(PySequence_GetItem(size, index));
    if (!item) {
        quarna::setComposedError(
            PyExc_RuntimeError, "Item ", index,
            " could not be retrieved from the value associated with the 'size' keyword.");
        return std::nullopt;
    }
    if (!pyObjectIsLong(item.get())) {
        refuse(PyExc_TypeError, "dimensions must be nonnegative integers.");
        return std::nullopt;
    }
    Py_ssize_t const dimension = PyLong_AsSsize_t(item.get());
    if (dimension < 0) {
        refuse(PyExc_ValueError,
               "size cannot contain negative dimensions. Use nonnegative integers for dimensions.");
        return std::nullopt;
    }
    return dimension;
}

bool refuseSecondSource(bool vectorIsKeyword)
{
    return refuse(
        PyExc_TypeError,
        vectorIsKeyword
            ? "initializer and 'vector' must not both be specified."
            : "more than two positional arguments must not be specified. A third will be treated as "
              "'vector', which must not be specified when an initializer is specified.");
}

}  // namespace

template <class T>
std::optional<quarna::data::TypedArray<T>>
FinalConstructorParser<T>::makeTypedArray(quarna::ConstructorArguments const& arguments)
{
    if (!takeArguments(arguments) || (!m_bufferReserved && !reserveBuffer(0))) {
        return std::nullopt;
    }
    auto const& dims = m_specifiedDims.empty() ? m_calculatedDims : m_specifiedDims;
    return quarna::makeTypedArrayFromBuf<T>(std::move(m_elements), m_isColumnMajor, m_factory, dims);
}

template <class T>
bool FinalConstructorParser<T>::takeArguments(quarna::ConstructorArguments const& arguments)
{
    PyObject* const initializer = arguments.initializer.get();
    PyObject* const size = arguments.size.get();
    PyObject* const vector = arguments.vector.get();
    bool const hasInitializer = !pyObjectIsEmpty(initializer);
    bool const hasVector = !pyObjectIsEmpty(vector);
    if (hasInitializer && hasVector) {
        return refuseSecondSource(arguments.vectorIsKeyword);
    }
    if (!pyObjectIsEmpty(size)) {
        if (!processSizeKwarg(size)) {
            return false;
        }
    } else if (!hasInitializer && !hasVector) {
        return processSize({0, 0});
    }
    if (hasVector) {
        return processVectorKwarg(vector);
    }
    return hasInitializer ? processInitializer(initializer) : fillWithZeros();
}

template <class T>
bool FinalConstructorParser<T>::processSizeKwarg(PyObject* size)
{
    if (!PySequence_Check(size)) {
        return refuse(PyExc_TypeError, "value of 'size' must be a sequence.");
    }
    Py_ssize_t const count = PySequence_Size(size);
    if (count <= 0) {
        return count == 0 && refuse(PyExc_ValueError, "sequence passed to 'size' must not be empty.");
    }
    std::vector<long> dims;
    for (Py_ssize_t index = 0; index < count; ++index) {
        auto const dimension = dimensionAt(size, index);
        if (!dimension) {
            return false;
        }
        dims.push_back(*dimension);
    }
    if (dims.size() == 1) {
        dims.insert(dims.begin(), 1);
    }
    dropTrailingOnes(dims);
    return processSize(std::move(dims));
}

template <class T>
bool FinalConstructorParser<T>::processSize(std::vector<long> dims)
{
    m_specifiedDims = std::move(dims);
    auto const count = quarna::checkedProduct(m_specifiedDims);
    return count == 0 || reserveBuffer(count);
}

template <class T>
bool FinalConstructorParser<T>::fillWithZeros()
{
    std::fill_n(m_elements.get(), m_capacity, T{});
    m_isColumnMajor = true;
    return true;
}

template <class T>
bool FinalConstructorParser<T>::processInitializer(PyObject* initializer)
{
    if (!flattenWithUnspecifiedDimensions(initializer, true) || !handleSingleSingletonDimensionEdgeCase()) {
        return false;
    }
    dropTrailingOnes(m_calculatedDims);
    return specifiedAndCalculatedDimensionsMatch();
}

template <class T>
bool FinalConstructorParser<T>::processVectorKwarg(PyObject* vector)
{
    if (!PySequence_Check(vector)) {
        return refuse(PyExc_ValueError, "value of 'vector' must be a sequence.");
    }
    if (pyObjectIsUnicodeOrString(vector)) {
        return refuse(PyExc_ValueError, "value passed to 'vector' must be numeric.");
    }
    Py_ssize_t const count = PySequence_Size(vector);
    if (count < 0) {
        return false;
    }
    m_calculatedDims = m_specifiedDims.empty() ? std::vector<long>{1, count} : std::vector<long>{count};
    if (!specifiedAndCalculatedDimensionsMatch() || (!m_bufferReserved && !reserveBuffer(count))) {
        return false;
    }
    // Whatever the kind of refusal, through 'vector' it is a ValueError.
    m_refusalClass = PyExc_ValueError;
    auto const elements = m_findElements(vector);
    if (elements && elements->view.dimensions.size() == 1) {
        return storeElements(*elements, count);
    }
    if (quarna::BufferElements const buffer(vector); buffer.source()) {
        return storeElements(*buffer.source(), count);
    }
    return takeVectorItems(vector, count);
}

template <class T>
bool FinalConstructorParser<T>::takeVectorItems(PyObject* vector, Py_ssize_t count)
{
    for (Py_ssize_t index = 0; index < count; ++index) {
        Reference const item = Reference::steal(PySequence_GetItem(vector, index));
        if (!item) {
            quarna::setComposedError(PyExc_RuntimeError, "item ", index, " could not be retrieved.");
            return false;
        }
        if (PySequence_Check(item.get())) {
            return refuse(PyExc_TypeError, "value of 'vector' must be an unnested sequence.");
        }
        if (!takeScalar(GetCValueFromPyObjFunctor<T>{}(item.get(), true))) {
            return false;
        }
    }
    return true;
}

#define QUARNA_ARRAY_TYPE(number, name, element)              \
    template std::optional<quarna::data::TypedArray<element>> \
    FinalConstructorParser<element>::makeTypedArray(quarna::ConstructorArguments const&);
#include "data/array_types.def"
