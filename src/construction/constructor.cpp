// The forms of a constructor call: nothing, 'size', an initializer, both, or 'vector'.
#include "construction/constructor.h"

#include "construction/allocation.h"
#include "construction/dimensions.h"
#include "data/hand_over.h"
#include "elements/arithmetic.h"
#include "vocabulary/python_values.h"

#include <cstddef>
#include <string>
#include <utility>

namespace quarna {

namespace {

Refused refuseSecondSource(bool vectorIsKeyword)
{
    return refuse(
        PyExc_TypeError,
        vectorIsKeyword
            ? "initializer and 'vector' must not both be specified."
            : "more than two positional arguments must not be specified. A third will be treated as "
              "'vector', which must not be specified when an initializer is specified.");
}

std::string getDimensionsAsStdString(std::vector<long> const& dims)
{
    std::string text;
    for (long const dim : dims) {
        text += text.empty() ? "" : ", ";
        text += std::to_string(dim);
    }
    return text;
}

}  // namespace

template <class T>
std::optional<LooseArray> FinalConstructorParser<T>::makeArray(ConstructorArguments const& arguments)
{
    PyObject* const initializer = arguments.initializer.get();
    PyObject* const vector = arguments.vector.get();
    bool const hasInitializer = !pyObjectIsEmpty(initializer);
    bool const hasVector = !pyObjectIsEmpty(vector);
    if (hasInitializer && hasVector) {
        refuseSecondSource(arguments.vectorIsKeyword);
        return std::nullopt;
    }
    if (!pyObjectIsEmpty(arguments.size.get()) && !processSizeKwarg(arguments.size.get())) {
        return std::nullopt;
    }
    if (!hasInitializer && !hasVector) {
        return makeZeros();
    }
    if (!reserveForSize()) {
        return std::nullopt;
    }
    bool const taken = hasVector ? processVectorKwarg(vector) : processInitializer(initializer);
    return taken ? makeFromValues() : std::nullopt;
}

template <class T>
std::optional<LooseArray> FinalConstructorParser<T>::makeZeros()
{
    std::vector<long> shape = m_specifiedDims.empty() ? std::vector<long>{0, 0} : std::move(m_specifiedDims);
    std::vector<std::size_t> const lengths(shape.begin(), shape.end());
    std::optional<LooseArray> zeros;
    bool const made = allocateOrRefuse<T>(checkedProduct(shape), [&](std::size_t) {
        zeros = LooseArray{m_reader.factory().template createArray<T>(lengths), data::arrayTypeOf<T>,
                           std::move(shape)};
    });
    return made ? std::move(zeros) : std::nullopt;
}

template <class T>
std::optional<LooseArray> FinalConstructorParser<T>::makeFromValues()
{
    // Without a scalar in the nest there is no block yet.
    if (!m_reader.reserve(0)) {
        return std::nullopt;
    }
    std::vector<long> shape = std::move(m_specifiedDims.empty() ? m_calculatedDims : m_specifiedDims);
    bool const inStorageOrder = m_isColumnMajor || m_reader.order() == WalkOrder::Stored;
    auto array =
        data::makeTypedArrayFromBuf<T>(m_reader.takeElements(), inStorageOrder, m_reader.factory(), shape);
    return LooseArray{std::move(array), data::arrayTypeOf<T>, std::move(shape)};
}

template <class T>
bool FinalConstructorParser<T>::processSizeKwarg(PyObject* size)
{
    if (!PySequence_Check(size)) {
        return refuse(PyExc_TypeError, "value of 'size' must be a sequence.");
    }
    Py_ssize_t const count = PySequence_Size(size);
    if (count < 0) {
        return false;
    }
    if (count == 0) {
        return refuse(PyExc_ValueError, "sequence passed to 'size' must not be empty.");
    }
    DimensionRefusals const refusals{
        " could not be retrieved from the value associated with the 'size' keyword.", PyExc_TypeError,
        "dimensions must be nonnegative integers.",
        "size cannot contain negative dimensions. Use nonnegative integers for dimensions."};
    auto dims = readDimensions(size, count, refusals);
    if (!dims) {
        return false;
    }
    if (dims->size() == 1) {
        dims->insert(dims->begin(), 1);
    }
    dropTrailingOnes(*dims);
    m_specifiedDims = *std::move(dims);
    return true;
}

// Memory for the size given comes before the values are looked at.
template <class T>
bool FinalConstructorParser<T>::reserveForSize()
{
    if (m_specifiedDims.empty()) {
        return true;
    }
    auto const count = checkedProduct(m_specifiedDims);
    return count == 0 ? true : m_reader.reserve(count);
}

template <class T>
bool FinalConstructorParser<T>::processInitializer(PyObject* initializer)
{
    if (!m_reader.read(initializer, true)) {
        return false;
    }
    m_calculatedDims = m_reader.dims();
    if (!handleSingleSingletonDimensionEdgeCase()) {
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
    return specifiedAndCalculatedDimensionsMatch() && m_reader.readVector(vector, count);
}

template <class T>
Refused FinalConstructorParser<T>::refuseDimensions(PyObject* exceptionClass) const
{
    return refuseWith(
        exceptionClass, "dimensions of initializer (", getDimensionsAsStdString(m_calculatedDims),
        ") do not match dimensions specified by 'size' (", getDimensionsAsStdString(m_specifiedDims), ").");
}

// A flat sequence is a row; without items it has no dimensions to speak of.
template <class T>
bool FinalConstructorParser<T>::handleSingleSingletonDimensionEdgeCase()
{
    auto const count = static_cast<long>(m_reader.elements().size());
    if (m_calculatedDims.size() != 1) {
        return true;
    }
    if (m_specifiedDims.empty()) {
        m_calculatedDims = {count > 0 ? 1 : 0, count};
        return true;
    }
    if (checkedProduct(m_specifiedDims) != count) {
        return refuseDimensions(QCPyError::shapeErr);
    }
    return true;
}

template <class T>
bool FinalConstructorParser<T>::specifiedAndCalculatedDimensionsMatch()
{
    if (m_specifiedDims.empty() || m_specifiedDims == m_calculatedDims) {
        return true;
    }
    auto const count = checkedProduct(m_calculatedDims);
    if (checkedProduct(m_specifiedDims) != count) {
        return refuseDimensions(QCPyError::shapeErr);
    }
    bool const isFlat = m_calculatedDims.size() == 1;
    if (isFlat && m_calculatedDims[0] > 1) {
        // Flat values fill the shape in storage order.
        m_isColumnMajor = true;
        return true;
    }
    bool const isSingleInRow = isFlat && count == 1 && m_specifiedDims.size() == 2 && m_specifiedDims[0] == 1;
    if (!isSingleInRow && count != 0) {
        return refuseDimensions(QCPyError::sizeErr);
    }
    return true;
}

#define QUARNA_ARRAY_TYPE(number, name, element) template class FinalConstructorParser<element>;
#include "data/array_types.def"

}  // namespace quarna
