// The two kinds of subscript that an array remembers, in the coordinates of the dimension that they restrict.
#pragma once

#include <boost/container/small_vector.hpp>

#include <variant>

/// One integer subscript.
struct IntegerIndexItem {
    long m_index = 0;
    bool m_isNormalized = false;

    /// Counts a negative index from the end. False, with nothing changed, for an index outside `length`.
    bool normalizeAgainstLength(long length);
};

/// One slice. Every empty slice is 0, 0, 1, 0; a negative step may have the stop -1, which takes in index 0.
struct SliceIndexItem {
    long m_start = 0;
    long m_stop = 0;
    long m_step = 1;
    long m_slice_len = 0;
    bool m_isNormalized = false;

    bool isEmpty() const { return m_slice_len == 0; }
    bool operator==(SliceIndexItem const&) const = default;
};

using IndexItem = std::variant<IntegerIndexItem, SliceIndexItem>;

/// The item at place k restricts dimension k: integers, then at most one slice. Few subscripts need no heap block.
using IndexItems = boost::container::small_vector<IndexItem, 3>;

namespace quarna {

/// The slice of start, stop and step clipped to a dimension, which select `count` indices, in canonical form.
SliceIndexItem makeSliceItem(long start, long stop, long step, long count);

/// The index at a position within the slice; the position is less than its length.
long indexWithinSlice(SliceIndexItem const& slice, long position);

/// The intersection of two slices of one dimension, with the product of their steps, neither of them negative.
SliceIndexItem intersection(SliceIndexItem const& held, SliceIndexItem const& next);

}  // namespace quarna
