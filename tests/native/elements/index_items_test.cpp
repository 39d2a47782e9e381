// The list of subscripts that an array keeps: the words that lie beyond what Python looks at, too.
#include "elements/index_items.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <limits>
#include <new>
#include <optional>

namespace quarna {
namespace {

constexpr long largest = std::numeric_limits<long>::max();

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
    IndexItems const integers = IndexItems(items, makeSliceItem(0, 1, 1, 1)).integersOnly();
    EXPECT_FALSE(integers.hasSlice() || integers.item(0).m_isNormalized || integers.item(2).m_isNormalized);
    EXPECT_EQ(integers.integerAt(0), largest - 1);
}

}  // namespace
}  // namespace quarna
