// Subscripts against the lists of indices that they stand for.
#include "elements/index_items.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <limits>
#include <new>
#include <optional>
#include <utility>
#include <vector>

namespace quarna {
namespace {

constexpr long largest = std::numeric_limits<long>::max();

std::vector<long> indicesOf(SliceIndexItem const& slice)
{
    std::vector<long> indices;
    for (long position = 0; position < slice.m_slice_len; ++position) {
        indices.push_back(indexWithinSlice(slice, position));
    }
    return indices;
}

SliceIndexItem ascending(long start, long stop, long step)
{
    long count = 0;
    for (long index = start; index < stop; index += step) {
        ++count;
    }
    return makeSliceItem(start, stop, step, count);
}

TEST(IndexItems, IntegersCountFromEitherEnd)
{
    std::array<long, 3> const rows[]{{0, 3, 0},  {2, 3, 2},   {3, 3, -1}, {-1, 3, 2},
                                     {-3, 3, 0}, {-4, 3, -1}, {0, 0, -1}, {-largest - 1, largest, -1}};
    for (auto const& [index, length, normalized] : rows) {
        IntegerIndexItem item{index};
        bool const fits = normalized >= 0;
        EXPECT_EQ(item.normalizeAgainstLength(length), fits) << index << " of " << length;
        EXPECT_EQ(item.m_index, fits ? normalized : index);
        EXPECT_EQ(item.m_isNormalized, fits);
    }
}

TEST(IndexItems, TwoSlicesSelectWhatBothBoundsAllowInStepsOfTheProduct)
{
    SliceIndexItem const empty{0, 0, 1, 0, true};
    for (int code = 0; code < 6 * 6 * 3 * 6 * 6 * 3; ++code) {
        int rest = code;
        auto const next = [&](int range) { return std::exchange(rest, rest / range) % range; };
        SliceIndexItem const held = ascending(next(6), next(6), next(3) + 1);
        SliceIndexItem const added = ascending(next(6), next(6), next(3) + 1);
        std::vector<long> expected;
        for (long index = std::max(held.m_start, added.m_start); index < std::min(held.m_stop, added.m_stop);
             index += held.m_step * added.m_step) {
            expected.push_back(index);
        }
        SliceIndexItem const both = intersection(held, added);
        ASSERT_EQ(indicesOf(both), expected) << code;
        ASSERT_TRUE(both.m_isNormalized);
        ASSERT_EQ(both.isEmpty(), both == empty);
    }
}

TEST(IndexItems, StepsPastTheEndSelectOneIndex)
{
    SliceIndexItem const far = makeSliceItem(1, 5, largest, 1);
    EXPECT_EQ(indicesOf(far), std::vector{1L});
    EXPECT_EQ(indicesOf(intersection(far, far)), std::vector{1L});
    EXPECT_EQ(indicesOf(intersection(far, ascending(0, 5, 2))), std::vector{1L});
    EXPECT_EQ(indicesOf(makeSliceItem(4, -1, -1, 5)), (std::vector<long>{4, 3, 2, 1, 0}));
}

// The words of an item list lie inside the object up to a point, and outside beyond it.
TEST(IndexItems, AListGrowsByOneItemAndKeepsWhatItHas)
{
    IndexItems items;
    EXPECT_TRUE(items.isEmpty());
    for (long count = 1; count <= 12; ++count) {
        bool const isNormalized = count % 3 != 0;
        IndexItems const longer(items, IntegerIndexItem{largest - count, isNormalized});
        SliceIndexItem const slice{count, -1, -2, 5, true};
        IndexItems const sliced(longer, slice);
        IndexItems const copy(sliced);
        IndexItems const replaced(IndexItems(copy, makeSliceItem(0, 1, 1, 1)), IntegerIndexItem{7});
        EXPECT_EQ(longer.slice(), std::nullopt);
        EXPECT_EQ(copy.slice(), slice);
        EXPECT_EQ(copy.integerCount(), static_cast<std::size_t>(count));
        EXPECT_EQ(replaced.integerAt(static_cast<std::size_t>(count)), 7);
        for (long place = 0; place < count; ++place) {
            IntegerIndexItem const item = copy.item(static_cast<std::size_t>(place));
            EXPECT_EQ(item.m_index, largest - place - 1);
            EXPECT_EQ(item.m_isNormalized, (place + 1) % 3 != 0);
        }
        items.~IndexItems();
        new (&items) IndexItems(longer);
    }
    items.markNotNormalized();
    EXPECT_FALSE(items.item(0).m_isNormalized);
    EXPECT_EQ(items.integerAt(0), largest - 1);
}

}  // namespace
}  // namespace quarna
