// A shape with the byte strides of contiguous storage.
#include "elements/layout.h"

#include "elements/arithmetic.h"

#include <algorithm>
#include <cstddef>
#include <utility>

namespace quarna {

Layout::Layout(std::span<long const> shape, long elementSize, char order)
    : m_words{}, m_count(static_cast<std::uint32_t>(shape.size())),
      m_hasElements(std::find(shape.begin(), shape.end(), 0) == shape.end())
{
    if (m_count > countInside) {
        m_words.outside = new long[2 * shape.size()];
    }
    std::copy(shape.begin(), shape.end(), words());
    long* const strides = words() + m_count;
    long stride = elementSize;
    for (std::size_t step = 0; step < shape.size(); ++step) {
        std::size_t const dimension = order == 'F' ? step : shape.size() - 1 - step;
        strides[dimension] = stride;
        stride = checkedProduct(stride, shape[dimension]).value_or(0);
    }
}

Layout::~Layout()
{
    if (m_count > countInside) {
        delete[] m_words.outside;
    }
}

void Layout::swap(Layout& other) noexcept
{
    std::swap(m_words, other.m_words);
    std::swap(m_count, other.m_count);
    std::swap(m_hasElements, other.m_hasElements);
}

}  // namespace quarna
