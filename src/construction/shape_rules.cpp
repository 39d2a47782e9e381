// How the dimensions found in the values meet those given by 'size'.
#include "construction/final_constructor_parser.h"
#include "vocabulary/arithmetic.h"
#include "vocabulary/errors.h"

#include <string>
#include <vector>

namespace {

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
bool FinalConstructorParser<T>::refuseDimensions(PyObject* exceptionClass) const
{
    quarna::setComposedError(
        exceptionClass, "dimensions of initializer (", getDimensionsAsStdString(m_calculatedDims),
        ") do not match dimensions specified by 'size' (", getDimensionsAsStdString(m_specifiedDims), ").");
    return false;
}

// A flat sequence is a row; without items it has no dimensions to speak of.
template <class T>
bool FinalConstructorParser<T>::handleSingleSingletonDimensionEdgeCase()
{
    if (m_calculatedDims.size() != 1) {
        return true;
    }
    if (!m_specifiedDims.empty()) {
        return quarna::checkedProduct(m_specifiedDims) == m_elementCount ||
               refuseDimensions(QCPyError::shapeErr);
    }
    m_calculatedDims = {m_elementCount > 0 ? 1 : 0, m_elementCount};
    return true;
}

template <class T>
bool FinalConstructorParser<T>::specifiedAndCalculatedDimensionsMatch()
{
    if (m_specifiedDims.empty() || m_specifiedDims == m_calculatedDims) {
        return true;
    }
    auto const count = quarna::checkedProduct(m_calculatedDims);
    if (quarna::checkedProduct(m_specifiedDims) != count) {
        return refuseDimensions(QCPyError::shapeErr);
    }
    bool const isFlat = m_calculatedDims.size() == 1;
    if (isFlat && m_calculatedDims[0] > 1) {
        // Flat values fill the shape in storage order.
        m_isColumnMajor = true;
        return true;
    }
    bool const isSingleInRow = isFlat && count == 1 && m_specifiedDims.size() == 2 && m_specifiedDims[0] == 1;
    return isSingleInRow || count == 0 || refuseDimensions(QCPyError::sizeErr);
}

#define QUARNA_ARRAY_TYPE(number, name, element)                                             \
    template bool FinalConstructorParser<element>::refuseDimensions(PyObject*) const;        \
    template bool FinalConstructorParser<element>::handleSingleSingletonDimensionEdgeCase(); \
    template bool FinalConstructorParser<element>::specifiedAndCalculatedDimensionsMatch();
#include "data/array_types.def"
