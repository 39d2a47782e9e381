// The two kinds of subscript, in the coordinates of the dimension that they restrict, and how an array keeps them.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace quarna {

/// One integer subscript.
struct IntegerIndexItem {
    long m_index = 0;
    bool m_isNormalized = false;

    /// Counts a negative index from the end. False, with nothing changed, for an index outside `length`.
    bool normalizeAgainstLength(long length)
    {
        if (m_index >= length || m_index < -length) {
            return false;
        }
        m_index += m_index < 0 ? length : 0;
        m_isNormalized = true;
        return true;
    }
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

/// The slice of start, stop and step clipped to a dimension, which select `count` indices, in canonical form.
SliceIndexItem makeSliceItem(long start, long stop, long step, long count);

/// The index at a position within the slice; the position is less than its length.
inline long indexWithinSlice(SliceIndexItem const& slice, long position)
{
    return slice.m_start + position * slice.m_step;
}

/// The intersection of two slices of one dimension, with the product of their steps, neither of them negative.
SliceIndexItem intersection(SliceIndexItem const& held, SliceIndexItem const& next);

/// The subscripts of one array: integers for the leading dimensions, then at most one slice, all of them final. The
/// few that an array has as a rule lie in the object itself.
class IndexItems {
public:
    IndexItems() : m_inside{} {}
    IndexItems(IndexItems const& other);
    IndexItems& operator=(IndexItems const&) = delete;
    ~IndexItems();

    /// `other` and one item more, which takes the place of a slice.
    IndexItems(IndexItems const& other, IntegerIndexItem const& item);
    IndexItems(IndexItems const& other, SliceIndexItem const& slice);

    bool isEmpty() const { return m_integerCount == 0 && !m_hasSlice; }
    std::size_t integerCount() const { return m_integerCount; }
    long integerAt(std::size_t place) const { return item(place).m_index; }
    IntegerIndexItem item(std::size_t place) const
    {
        long const word = words()[place];
        return {word < 0 ? ~word : word, word >= 0};
    }

    bool hasSlice() const { return m_hasSlice; }
    /// There is one.
    SliceIndexItem slice() const
    {
        long const* const stored = words() + m_integerCount;
        return {stored[0], stored[1], stored[2], stored[3], true};
    }
    long sliceLength() const { return words()[m_integerCount + wordsOfSlice - 1]; }

    /// The same without the slice, and without an integer that counts as normalised.
    IndexItems integersOnly() const;

private:
    static constexpr std::size_t wordsOfSlice = 4;
    static constexpr std::size_t wordsInside = 6;

    IndexItems(IndexItems const& other, std::size_t integerCount, bool hasSlice);

    std::size_t wordCount() const { return m_integerCount + (m_hasSlice ? wordsOfSlice : 0); }
    bool liesInside() const { return wordCount() <= wordsInside; }
    long const* words() const { return liesInside() ? m_inside.data() : m_outside; }
    long* words() { return liesInside() ? m_inside.data() : m_outside; }

    // Integers, then start, stop, step and length of the slice. An integer that does not count as normalised is
    // kept as its complement: no index is negative.
    union {
        std::array<long, wordsInside> m_inside;
        long* m_outside;
    };
    std::uint32_t m_integerCount = 0;
    bool m_hasSlice = false;
};

}  // namespace quarna
