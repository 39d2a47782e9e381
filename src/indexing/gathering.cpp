// Data arrays made from what is selected: the gathered contents, the plain elements, the parts of complex ones.
#include "construction/element_conversion.h"
#include "indexing/qcpp_py_array.h"
#include "vocabulary/errors.h"
#include "wrapper/element_object.h"

#include <cstddef>
#include <optional>
#include <utility>
#include <vector>

namespace {

/// Copies the selected elements to `destination` in storage order. A gathered element is what it would be had it
/// come as a Python number; false, with the exception of the first one in nested order, if there are some that
/// cannot be taken back.
template <class T>
requires quarna::survivesPythonNumber<T>
bool copySelection(void const* block, quarna::StridedView const& view, T* destination)
{
    walkRuns(view, quarna::WalkOrder::Stored, [&](long offset, long length, long stride) {
        destination = quarna::loadRun(block, offset, length, stride, destination);
        return true;
    });
    return true;
}

template <class T>
bool copySelection(void const* block, quarna::StridedView const& view, T* destination)
{
    auto const throughPythonNumber = [&](long offset) {
        return quarna::convertNumber<T>(quarna::numberFromElement(quarna::loadElementAt<T>(block, offset)),
                                        false);
    };
    bool complete = true;
    walkElements(view, quarna::WalkOrder::Stored, [&](long offset) {
        auto const result = throughPythonNumber(offset);
        complete = complete && result.value;
        *destination++ = result.value.value_or(T{});
    });
    if (complete) {
        return true;
    }
    // Raising can run Python code, so it comes when the elements are no longer looked at.
    CValueResult<T> refusal;
    walkElements(view, quarna::WalkOrder::Nested, [&](long offset) {
        auto result = throughPythonNumber(offset);
        if (!result.value && refusal.exceptionType == nullptr) {
            refusal = std::move(result);
        }
    });
    setError(refusal.exceptionType, refusal.message.c_str());
    return false;
}

/// The dimensions of a gathered selection. An empty one has as many as the array that it was taken from.
std::vector<std::size_t> gatheredDimensions(quarna::StridedView const& view, std::vector<long> const& shape,
                                            bool asRowVector)
{
    std::vector<std::size_t> dimensions;
    if (view.count() == 0) {
        dimensions.assign(shape.begin(), shape.end());
        dimensions.front() = 0;
        return dimensions;
    }
    if (asRowVector && view.dimensions.size() == 1) {
        dimensions.push_back(1);
    }
    for (quarna::StridedDimension const& dimension : view.dimensions) {
        dimensions.push_back(static_cast<std::size_t>(dimension.length));
    }
    return dimensions;
}

}  // namespace

template <class T>
std::optional<quarna::data::Array> QCppPyArray::gather(bool asRowVector) const
{
    if (!requireUsable()) {
        return std::nullopt;
    }
    quarna::StridedView const view = selection();
    quarna::data::ArrayFactory factory;
    auto buffer = factory.createBuffer<T>(static_cast<std::size_t>(view.count()));
    if (!copySelection<T>(m_wrapper->buf(), view, buffer.get())) {
        return std::nullopt;
    }
    auto const dimensions = gatheredDimensions(view, m_wrapper->shape(), asRowVector);
    return factory.createArrayFromBuffer<T>(dimensions, std::move(buffer));
}

template <class T>
std::optional<quarna::data::Array> QCppPyArray::getIndexedArrayAsQDA(bool asRowVector)
{
    if (!m_indexedArrayAsQDA) {
        m_indexedArrayAsQDA = gather<T>(asRowVector);
    }
    return m_indexedArrayAsQDA;
}

std::optional<quarna::data::Array> QCppPyArray::noncomplex() const
{
    if (m_isComplex) {
        setError(PyExc_ValueError, "noncomplex() must not be called on a complex array.");
        return std::nullopt;
    }
    quarna::data::ArrayFactory factory;
    return m_wrapper->noncomplex(factory);
}

std::optional<quarna::data::Array> QCppPyArray::realOrImag(bool wantReal) const
{
    if (!m_isComplex) {
        setError(PyExc_ValueError, "real() and imag() can be called only on a complex array.");
        return std::nullopt;
    }
    quarna::data::ArrayFactory factory;
    return wantReal ? m_wrapper->real(factory) : m_wrapper->imag(factory);
}

#define QUARNA_ARRAY_TYPE(number, name, element) \
    template std::optional<quarna::data::Array> QCppPyArray::getIndexedArrayAsQDA<element>(bool);
#include "data/array_types.def"
