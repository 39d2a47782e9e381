// Arrays made from what is selected: the gathered contents, the plain elements, the parts of complex ones.
#include "data/array_factory.h"
#include "data/element_dispatch.h"
#include "elements/element_load.h"
#include "indexing/qcpp_py_array.h"
#include "numbers/element_conversion.h"
#include "vocabulary/errors.h"

#include <algorithm>
#include <cstddef>
#include <optional>
#include <type_traits>
#include <utility>
#include <vector>

using namespace quarna;

namespace {

/// An element as it would be had it come as a Python number.
template <class T>
CValueResult<T> throughPythonNumber(void const* block, long offset)
{
    return convertNumber<T>(numberFromElement(loadElementAt<T>(block, offset)), false);
}

/// Raises for the first element in nested order that cannot be taken back.
template <class T>
void refuseElements(void const* block, StridedView const& view)
{
    // Raising can run Python code, so it comes when the elements are no longer looked at.
    CValueResult<T> refusal;
    walkElements(view, WalkOrder::Nested, [&](long offset) {
        auto result = throughPythonNumber<T>(block, offset);
        if (!result.value && refusal.exceptionType == nullptr) {
            refusal = std::move(result);
        }
    });
    setError(refusal.exceptionType, refusal.message.c_str());
}

/// Copies the selected elements to `destination` in storage order; false with an exception set.
template <class T>
bool copySelection(void const* block, StridedView const& view, T* destination)
{
    if constexpr (survivesPythonNumber<T>) {
        walkRuns(view, WalkOrder::Stored, [&](long offset, long length, long stride) {
            destination = loadRun(block, offset, length, stride, destination);
            return true;
        });
        return true;
    } else {
        bool complete = true;
        walkElements(view, WalkOrder::Stored, [&](long offset) {
            auto const result = throughPythonNumber<T>(block, offset);
            complete = complete && result.value;
            *destination++ = result.value.value_or(T{});
        });
        if (!complete) {
            refuseElements<T>(block, view);
        }
        return complete;
    }
}

/// The dimensions of a gathered selection. An empty one has as many as the array that it was taken from.
std::vector<long> gatheredShape(StridedView const& view, std::span<long const> shape, bool asRowVector)
{
    std::vector<long> gathered;
    if (view.count() == 0) {
        gathered.assign(shape.begin(), shape.end());
        gathered.front() = 0;
        return gathered;
    }
    if (asRowVector && view.dimensions.size() == 1) {
        gathered.push_back(1);
    }
    for (StridedDimension const& dimension : view.dimensions) {
        gathered.push_back(dimension.length);
    }
    return gathered;
}

template <class T>
std::optional<LooseArray> gather(QDArrayWrapper const& wrapper, StridedView const& view, bool asRowVector)
{
    data::ArrayFactory factory;
    auto buffer = factory.createBuffer<T>(static_cast<std::size_t>(view.count()));
    if (!copySelection<T>(wrapper.buf(), view, buffer.get())) {
        return std::nullopt;
    }
    auto shape = gatheredShape(view, wrapper.shape(), asRowVector);
    std::vector<std::size_t> const lengths(shape.begin(), shape.end());
    return LooseArray{factory.createArrayFromBuffer<T>(lengths, std::move(buffer)), wrapper.type(),
                      std::move(shape)};
}

/// Whether all elements of T that a block holds come back unchanged from their way through Python numbers.
template <class T>
bool allSurvive(void const* block, long count)
{
    if constexpr (survivesPythonNumber<T>) {
        return true;
    } else {
        bool survive = true;
        for (long i = 0; survive && i < count; ++i) {
            auto const result = throughPythonNumber<T>(block, i);
            survive = result.value && *result.value == loadElementAt<T>(block, i);
        }
        return survive;
    }
}

/// The whole of an array: as it lies there, where that comes to the same. One without elements loses a length.
template <class T>
std::optional<LooseArray> gatherAll(QDArrayWrapper const& wrapper, StridedView const& view)
{
    if (view.count() == 0 || !allSurvive<T>(wrapper.buf(), view.count())) {
        return gather<T>(wrapper, view, false);
    }
    return wrapper.snapshot();
}

}  // namespace

bool QCppPyArray::gatherOnce(bool asRowVector)
{
    if (m_gathered != nullptr) {
        return true;
    }
    if (!requireUsable()) {
        return false;
    }
    auto elements = data::visitElementType(m_wrapper->type(), [&]<class T>(std::type_identity<T>) {
        return indicesAreEmpty() ? gatherAll<T>(*m_wrapper, selection())
                                 : gather<T>(*m_wrapper, selection(), asRowVector);
    });
    if (!elements) {
        return false;
    }
    m_gathered.reset(new Gathered{*std::move(elements), false});
    return true;
}

QDArrayWrapperPtr QCppPyArray::wrapperOfGathered()
{
    if (!gatherOnce(false)) {
        return nullptr;
    }
    LooseArray elements = m_gathered->elements;
    if (m_gathered->isSeen) {
        elements.array.makeUnshared();
    }
    return {new QDArrayWrapper(std::move(elements), m_wrapper->getOrder())};
}

data::impl::ArrayImpl* QCppPyArray::seenHandle()
{
    if (indicesAreEmpty()) {
        return m_wrapper->seenHandle();
    }
    if (!gatherOnce(true)) {
        return nullptr;
    }
    if (!m_gathered->isSeen) {
        // Clones that read the gathered elements where they lie keep them to themselves.
        if (!m_gathered->elements.array.isSoleHolder()) {
            m_gathered->elements.array.makeUnshared();
        }
        m_gathered->isSeen = true;
    }
    return m_gathered->elements.array.handle();
}

std::optional<LooseArray> QCppPyArray::noncomplex() const
{
    if (m_isComplex) {
        setError(PyExc_ValueError, "noncomplex() must not be called on a complex array.");
        return std::nullopt;
    }
    return m_wrapper->noncomplex();
}

std::optional<LooseArray> QCppPyArray::realOrImag(bool wantReal) const
{
    if (!m_isComplex) {
        setError(PyExc_ValueError, "real() and imag() can be called only on a complex array.");
        return std::nullopt;
    }
    return wantReal ? m_wrapper->real() : m_wrapper->imag();
}
