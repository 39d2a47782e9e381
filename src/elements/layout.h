// A shape with the byte strides of contiguous storage.
#pragma once

#include <cstdint>
#include <span>

namespace quarna {

/// The lengths of all dimensions and the distance in bytes between neighbours along each, for order 'F' (the first
/// index fastest) or 'C' (the last). A stride that needs more than 63 bits is 0: only a block without elements can
/// have it, which no index reaches into. Two dimensions lie in the object itself.
class Layout {
public:
    Layout(std::span<long const> shape, long elementSize, char order);
    Layout(Layout const&) = delete;
    Layout& operator=(Layout const&) = delete;
    ~Layout();

    void swap(Layout& other) noexcept;

    /// False if a length is 0: then no index reaches into the block, and no stride means anything.
    bool hasElements() const { return m_hasElements; }

    std::span<long const> shape() const { return {words(), m_count}; }
    std::span<long const> strides() const { return {words() + m_count, m_count}; }

private:
    static constexpr std::uint32_t countInside = 2;

    long const* words() const { return m_count <= countInside ? m_words.inside : m_words.outside; }
    long* words() { return m_count <= countInside ? m_words.inside : m_words.outside; }

    union Words {
        long inside[2 * countInside];
        long* outside;
    };

    Words m_words;  // the lengths, then the strides
    std::uint32_t m_count;
    bool m_hasElements;
};

}  // namespace quarna
