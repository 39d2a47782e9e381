// The wrapper's core: its shape, where its elements lie, and who sees them.
#include "wrapper/qd_array_wrapper.h"

#include "data/array_factory.h"
#include "data/element_dispatch.h"
#include "elements/arithmetic.h"
#include "wrapper/buffer_format.h"

#include <cassert>
#include <cstring>
#include <limits>
#include <type_traits>
#include <utility>
#include <vector>

using namespace quarna;

namespace {

using data::ExceptionType;

void requireThatItFits(bool fits)
{
    if (!fits) {
        data::detail::throwIfError(static_cast<int>(ExceptionType::TooManyElements), {});
    }
}

std::vector<long> shapeOf(data::Array const& array)
{
    std::vector<long> shape;
    for (std::size_t const length : array.dimensions()) {
        requireThatItFits(length <= static_cast<std::size_t>(std::numeric_limits<long>::max()));
        shape.push_back(static_cast<long>(length));
    }
    return shape;
}

// Reads trust the shape, so an array whose count contradicts it is not read at all.
void requireSoundShape(data::Array const& array, std::span<long const> shape, data::ArrayType type)
{
    auto const count = checkedProduct(shape);
    requireThatItFits(count && static_cast<std::size_t>(*count) == array.elementCount());
    requireThatItFits(checkedProduct(*count, static_cast<long>(data::elementSize(type))).has_value());
}

}  // namespace

QDArrayWrapper::QDArrayWrapper(Store&& store, data::ArrayType type, std::span<long const> shape, char order)
    : m_type(static_cast<std::uint8_t>(type)), m_order(order), m_store(std::move(store)),
      m_layout(shape, static_cast<long>(data::elementSize(type)), order)
{}

QDArrayWrapper::QDArrayWrapper(LooseArray&& array, char order)
    : QDArrayWrapper(Store(std::move(array.array), array.type), array.type, array.shape, order)
{}

QDArrayWrapperPtr QDArrayWrapper::ofSeenArray(data::Array array)
{
    data::ArrayType const type = array.getType();
    auto const shape = shapeOf(array);
    requireSoundShape(array, shape, type);
    Store seen(std::move(array), type);
    QDArrayWrapperPtr wrapper(new QDArrayWrapper(seen.copy(type), type, shape, 'F'));
    wrapper->m_seen.reset(new Store(std::move(seen)));
    return wrapper;
}

long QDArrayWrapper::getNumberOfElements() const
{
    return *checkedProduct(shape());
}

char* QDArrayWrapper::format() const
{
    return classid2format(type());
}

void* QDArrayWrapper::pinnedBuf()
{
    m_store.makeOwn(type());
    m_isPinned = true;
    return m_store.elements();
}

LooseArray QDArrayWrapper::snapshot() const
{
    return {m_isPinned ? m_store.copy(type()).array() : m_store.array(),
            type(),
            {shape().begin(), shape().end()}};
}

data::impl::ArrayImpl* QDArrayWrapper::seenHandle()
{
    if (m_seen == nullptr) {
        makeSeenStore();
    }
    return m_seen->array().handle();
}

// The data array of the store may have been made for another shape.
void QDArrayWrapper::makeSeenStore()
{
    data::ArrayFactory factory;
    data::visitElementType(type(), [&]<class T>(std::type_identity<T>) {
        auto const count = static_cast<std::size_t>(getNumberOfElements());
        auto buffer = factory.createBuffer<T>(count);
        std::memcpy(static_cast<void*>(buffer.get()), buf(), count * sizeof(T));
        std::vector<std::size_t> const lengths(shape().begin(), shape().end());
        auto const layout = m_order == 'F' ? data::MemoryLayout::COLUMN_MAJOR : data::MemoryLayout::ROW_MAJOR;
        data::Array array = factory.createArrayFromBuffer<T>(lengths, std::move(buffer), layout);
        m_seen = std::make_unique<Store>(std::move(array), type());
    });
}

void QDArrayWrapper::decrementExportCount()
{
    assert(m_exports > 0);
    m_exports -= m_exports > 0 ? 1 : 0;
}

long QDArrayWrapper::getElementOffsetFromIndices(std::span<long const> indices) const
{
    if (indices.size() > shape().size()) {
        return -1;
    }
    long bytes = 0;
    for (std::size_t dimension = 0; dimension < indices.size(); ++dimension) {
        long distance = 0;
        if (__builtin_mul_overflow(indices[dimension], bytewiseStrides()[dimension], &distance) ||
            __builtin_add_overflow(bytes, distance, &bytes)) {
            return -1;
        }
    }
    return bytes / getElementSizeInBytes();
}

void QDArrayWrapper::reshape(std::span<long const> dims, char order)
{
    Layout layout(dims, getElementSizeInBytes(), order);
    // Nothing from here on can fail.
    if (m_seen != nullptr && m_isPinned) {
        std::memcpy(m_store.elements(), m_seen->elements(), static_cast<std::size_t>(getBufferSizeInBytes()));
    } else if (m_seen != nullptr) {
        m_store = *std::move(m_seen);
    }
    m_seen.reset();
    m_layout.swap(layout);
    m_order = order;
    ++m_reshapes;
}
