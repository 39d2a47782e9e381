// Arithmetic on subscripts.
#include "indexing/index_items.h"

#include "vocabulary/arithmetic.h"

#include <algorithm>
#include <limits>

bool IntegerIndexItem::normalizeAgainstLength(long length)
{
    if (m_index >= length || m_index < -length) {
        return false;
    }
    m_index += m_index < 0 ? length : 0;
    m_isNormalized = true;
    return true;
}

SliceIndexItem quarna::makeSliceItem(long start, long stop, long step, long count)
{
    if (count == 0) {
        return {0, 0, 1, 0, true};
    }
    return {start, stop, step, count, true};
}

long quarna::indexWithinSlice(SliceIndexItem const& slice, long position)
{
    return slice.m_start + position * slice.m_step;
}

SliceIndexItem quarna::intersection(SliceIndexItem const& held, SliceIndexItem const& next)
{
    long const start = std::max(held.m_start, next.m_start);
    long const stop = std::min(held.m_stop, next.m_stop);
    // A step beyond 63 bits runs past every end, as the largest step does.
    long const step = checkedProduct(held.m_step, next.m_step).value_or(std::numeric_limits<long>::max());
    return makeSliceItem(start, stop, step, stop <= start ? 0 : (stop - start - 1) / step + 1);
}
