// A rectangular selection of elements as offset, lengths and strides, and native walks over it.
#pragma once

#include <boost/container/small_vector.hpp>

#include <algorithm>
#include <cstddef>
#include <utility>

namespace quarna {

/// One dimension of a selection; the stride is the distance between neighbours in elements.
struct StridedDimension {
    long length;
    long stride;
};

using StridedDimensions = boost::container::small_vector<StridedDimension, 4>;

struct StridedView {
    long offset = 0;               // of the first element
    StridedDimensions dimensions;  // the outermost of the nesting first

    /// The number of elements. It fits, as the selection lies within an array.
    long count() const
    {
        bool const isEmpty = std::any_of(dimensions.begin(), dimensions.end(),
                                         [](StridedDimension dimension) { return dimension.length == 0; });
        long count = isEmpty ? 0 : 1;
        for (std::size_t level = 0; count > 0 && level < dimensions.size(); ++level) {
            count *= dimensions[level].length;
        }
        return count;
    }
};

/// Makes one dimension of neighbours that a walk in the order of storage takes as one, in all of these selections of
/// one shape: it takes fewer and longer runs then. None of them is empty.
template <class... Views>
void joinDimensions(Views&... views)
{
    auto const levels = std::min({views.dimensions.size()...});
    std::size_t last = 0;
    for (std::size_t level = 1; level < levels; ++level) {
        auto const goesOn = [&](StridedDimensions const& dimensions) {
            return dimensions[last].stride * dimensions[last].length == dimensions[level].stride;
        };
        if ((goesOn(views.dimensions) && ...)) {
            ((views.dimensions[last].length *= views.dimensions[level].length), ...);
        } else {
            ++last;
            ((views.dimensions[last] = views.dimensions[level]), ...);
        }
    }
    (views.dimensions.resize(last + 1), ...);
}

/// Counts through the positions of some dimensions, the first of the list fastest, and keeps their offset.
class Odometer {
public:
    Odometer(long offset, StridedDimensions fastestFirst)
        : m_offset(offset), m_dimensions(std::move(fastestFirst)), m_counters(m_dimensions.size(), 0)
    {}

    long offset() const { return m_offset; }

    /// To the next position; false after the last.
    bool advance()
    {
        for (m_restarted = 0; m_restarted < m_dimensions.size(); ++m_restarted) {
            auto const [length, stride] = m_dimensions[m_restarted];
            if (++m_counters[m_restarted] < length) {
                m_offset += stride;
                return true;
            }
            m_offset -= (length - 1) * stride;
            m_counters[m_restarted] = 0;
        }
        return false;
    }

    /// How many dimensions the last step took back to their start.
    std::size_t restarted() const { return m_restarted; }

private:
    long m_offset;
    StridedDimensions m_dimensions;
    boost::container::small_vector<long, 4> m_counters;
    std::size_t m_restarted = 0;
};

/// The order of nested Python sequences, the last dimension fastest, or of column-major storage, the first.
enum class WalkOrder { Nested, Stored };

/// Walks a selection that is not empty in runs of elements along its fastest dimension.
class RunCursor {
public:
    RunCursor(StridedView const& view, WalkOrder order) : RunCursor(view.offset, fastestFirst(view, order)) {}

    long offset() const { return m_position.offset(); }
    StridedDimension run() const { return m_run; }
    bool advance() { return m_position.advance(); }

private:
    RunCursor(long offset, StridedDimensions const& dimensions)
        : m_run(dimensions.front()),
          m_position(offset, StridedDimensions(dimensions.begin() + 1, dimensions.end()))
    {}

    // Dimensions of length 1 do not move a walk.
    static StridedDimensions fastestFirst(StridedView const& view, WalkOrder order)
    {
        StridedDimensions dimensions = view.dimensions;
        auto const moving = std::remove_if(dimensions.begin(), dimensions.end(),
                                           [](StridedDimension dimension) { return dimension.length == 1; });
        dimensions.erase(moving, dimensions.end());
        if (order == WalkOrder::Nested) {
            std::reverse(dimensions.begin(), dimensions.end());
        }
        if (dimensions.empty()) {
            dimensions.assign(1, {1, 1});
        }
        return dimensions;
    }

    StridedDimension m_run;
    Odometer m_position;
};

/// Calls visit(offset, length, stride) for each run of elements until it returns false.
template <class Visit>
void walkRuns(StridedView const& view, WalkOrder order, Visit&& visit)
{
    if (view.count() == 0) {
        return;
    }
    RunCursor cursor(view, order);
    while (visit(cursor.offset(), cursor.run().length, cursor.run().stride) && cursor.advance()) {
    }
}

/// The same, element by element.
template <class Visit>
void walkElements(StridedView const& view, WalkOrder order, Visit&& visit)
{
    walkRuns(view, order, [&](long offset, long length, long stride) {
        for (long i = 0; i < length; ++i) {
            visit(offset + i * stride);
        }
        return true;
    });
}

}  // namespace quarna
