// Arithmetic on subscripts, and how an array keeps them.
#include "elements/index_items.h"

#include "elements/arithmetic.h"

#include <algorithm>
#include <limits>

namespace quarna {

SliceIndexItem makeSliceItem(long start, long stop, long step, long count)
{
    if (count == 0) {
        return {0, 0, 1, 0, true};
    }
    return {start, stop, step, count, true};
}

SliceIndexItem intersection(SliceIndexItem const& held, SliceIndexItem const& next)
{
    long const start = std::max(held.m_start, next.m_start);
    long const stop = std::min(held.m_stop, next.m_stop);
    // A step beyond 63 bits runs past every end, as the largest step does.
    long const step = checkedProduct(held.m_step, next.m_step).value_or(std::numeric_limits<long>::max());
    return makeSliceItem(start, stop, step, stop <= start ? 0 : (stop - start - 1) / step + 1);
}

// The integers of `other` that there is room for; what lies behind them is to be written.
IndexItems::IndexItems(IndexItems const& other, std::size_t integerCount, bool hasSlice)
    : m_integerCount(static_cast<std::uint32_t>(integerCount)), m_hasSlice(hasSlice)
{
    if (liesInside() && other.liesInside()) {
        m_inside = other.m_inside;
        return;
    }
    if (!liesInside()) {
        m_outside = new long[wordCount()];
    }
    std::copy_n(other.words(), std::min<std::size_t>(integerCount, other.m_integerCount), words());
}

IndexItems::IndexItems(IndexItems const& other) : IndexItems(other, other.m_integerCount, other.m_hasSlice)
{
    std::copy_n(other.words(), wordCount(), words());
}

IndexItems::IndexItems(IndexItems const& other, IntegerIndexItem const& item)
    : IndexItems(other, other.m_integerCount + 1U, false)
{
    words()[other.m_integerCount] = item.m_isNormalized ? item.m_index : ~item.m_index;
}

IndexItems::IndexItems(IndexItems const& other, SliceIndexItem const& slice)
    : IndexItems(other, other.m_integerCount, true)
{
    long* const stored = words() + m_integerCount;
    stored[0] = slice.m_start;
    stored[1] = slice.m_stop;
    stored[2] = slice.m_step;
    stored[3] = slice.m_slice_len;
}

IndexItems::~IndexItems()
{
    if (!liesInside()) {
        delete[] m_outside;
    }
}

IndexItems IndexItems::integersOnly() const
{
    IndexItems integers(*this, m_integerCount, false);
    for (std::size_t place = 0; place < m_integerCount; ++place) {
        long& word = integers.words()[place];
        word = word < 0 ? word : ~word;
    }
    return integers;
}

}  // namespace quarna
