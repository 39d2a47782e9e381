// The wrapper's core: what it derives from its data array, and index arithmetic.
#include "wrapper/qd_array_wrapper.h"

#include "vocabulary/arithmetic.h"
#include "wrapper/apply_numeric_visitor.h"
#include "wrapper/buffer_format.h"
#include "wrapper/layout.h"
#include "wrapper/mirror.h"

#include <cassert>
#include <cstddef>
#include <cstring>
#include <limits>
#include <new>
#include <type_traits>
#include <utility>

namespace {

using quarna::data::ExceptionType;

[[noreturn]] void throwTooManyElements()
{
    quarna::data::detail::throwIfError(static_cast<int>(ExceptionType::TooManyElements), {});
    __builtin_unreachable();
}

long narrowed(std::size_t length)
{
    if (length > static_cast<std::size_t>(std::numeric_limits<long>::max())) {
        throwTooManyElements();
    }
    return static_cast<long>(length);
}

std::vector<long> shapeOf(quarna::data::Array const& array)
{
    std::vector<long> shape;
    for (std::size_t const length : array.dimensions()) {
        shape.push_back(narrowed(length));
    }
    return shape;
}

long elementSizeOf(quarna::data::Array const& array)
{
    return quarna::data::visitElementType(
        array.getType(), []<class T>(std::type_identity<T>) { return static_cast<long>(sizeof(T)); });
}

}  // namespace

quarna::MirrorBlock quarna::makeMirror(data::Array const& array, long sizeInBytes)
{
    auto const size = static_cast<std::size_t>(sizeInBytes);
    MirrorBlock mirror(std::malloc(size > 0 ? size : 1));
    if (!mirror) {
        throw std::bad_alloc();
    }
    if (size > 0) {
        data::apply_numeric_visitor(array, [&](auto const& typed) {
            std::memcpy(mirror.get(), static_cast<void const*>(typed.elements()), size);
        });
    }
    return mirror;
}

QDArrayWrapper::QDArrayWrapper(quarna::data::Array&& array, char order)
    : m_array(std::move(array)), m_order(order)
{
    init();
}

QDArrayWrapper::QDArrayWrapper(quarna::data::Array const& array, char order) : m_array(array), m_order(order)
{
    init();
}

void QDArrayWrapper::init()
{
    m_shape = shapeOf(m_array);
    m_elemSizeInBytes = elementSizeOf(m_array);
    m_bytewiseStrides = quarna::contiguousStrides(m_shape, m_elemSizeInBytes, m_order);
    m_numElems = narrowed(m_array.elementCount());
    auto const size = quarna::checkedProduct(m_numElems, m_elemSizeInBytes);
    // Reads trust the shape, so a library whose count contradicts it is not read at all.
    if (!size || quarna::checkedProduct(m_shape) != m_numElems) {
        throwTooManyElements();
    }
    m_bufferSizeInBytes = *size;
    m_buf = quarna::makeMirror(m_array, m_bufferSizeInBytes);
}

char* QDArrayWrapper::format() const
{
    return classid2format(m_array.getType());
}

void QDArrayWrapper::decrementExportCount()
{
    assert(m_exports > 0);
    m_exports -= m_exports > 0 ? 1 : 0;
}

long QDArrayWrapper::getElementOffsetFromIndices(std::span<long const> indices) const
{
    if (indices.size() > m_shape.size()) {
        return -1;
    }
    long bytes = 0;
    for (std::size_t dimension = 0; dimension < indices.size(); ++dimension) {
        long distance = 0;
        if (__builtin_mul_overflow(indices[dimension], m_bytewiseStrides[dimension], &distance) ||
            __builtin_add_overflow(bytes, distance, &bytes)) {
            return -1;
        }
    }
    return bytes / m_elemSizeInBytes;
}

long QDArrayWrapper::normalizedIndex(long index, long dimension) const
{
    long const length = m_shape[static_cast<std::size_t>(dimension)];
    if (index < 0) {
        return length + index;
    }
    return index < length ? index : -999;
}
