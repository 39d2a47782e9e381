// Data arrays made from what is selected: the gathered contents, the plain elements, the parts of complex ones.
#include "construction/element_conversion.h"
#include "indexing/qcpp_py_array.h"
#include "vocabulary/errors.h"
#include "vocabulary/references.h"
#include "wrapper/element_object.h"

#include <limits>

using quarna::RealPartOf;
using quarna::Reference;

namespace {

// A gathered element is what it would be had it come as a Python number: a double holds 53 bits of an integer
// part, and an int is taken in the signed range only. Empty for one that cannot be taken back.
template <class T>
std::optional<T> throughPythonNumber(T element)
{
    using Real = RealPartOf<T>;
    if constexpr (std::same_as<T, std::uint64_t>) {
        return element <= std::uint64_t{std::numeric_limits<std::int64_t>::max()} ? std::optional(element)
                                                                                  : std::nullopt;
    } else if constexpr (quarna::ComplexInteger<T>) {
        auto const real = convertAndCheckForOverflow<double, Real>(static_cast<double>(element.real()));
        auto const imaginary = convertAndCheckForOverflow<double, Real>(static_cast<double>(element.imag()));
        return real && imaginary ? std::optional(T(*real, *imaginary)) : std::nullopt;
    } else {
        return element;
    }
}

template <class T>
void setErrorOfRefusedElement(T element)
{
    Reference const number = Reference::steal(quarna::makeNumber(element));
    if (number) {
        auto const result = GetCValueFromPyObjFunctor<T>{}(number.get(), false);
        setError(result.exceptionType, result.message.c_str());
    }
}

/// Copies the selected elements to `destination` in storage order; false with the exception of the first one, in
/// nested order, that cannot be taken.
template <class T>
bool copySelection(void const* block, quarna::StridedView const& view, T* destination)
{
    auto const elementAt = [&](long offset) {
        return quarna::loadElement<T>(static_cast<unsigned char const*>(block) + offset * long{sizeof(T)});
    };
    bool complete = true;
    walkRuns(view, quarna::WalkOrder::Stored, [&](long offset, long length, long stride) {
        for (long i = 0; i < length && complete; ++i) {
            auto const element = throughPythonNumber(elementAt(offset + i * stride));
            complete = element.has_value();
            *destination++ = element.value_or(T{});
        }
        return complete;
    });
    if (complete) {
        return true;
    }
    walkElements(view, quarna::WalkOrder::Nested, [&](long offset) {
        if (!PyErr_Occurred() && !throughPythonNumber(elementAt(offset))) {
            setErrorOfRefusedElement(elementAt(offset));
        }
    });
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
