// Plain nests, some lists at a time.
//
// Neighbours in storage are items of different lists. So the lists that stand side by side along the first dimension
// are read together: what they give fills whole lines of the cache, and nothing is written twice or sorted afterwards.
#include "construction/plain_nest.h"

#include "construction/plain_row.h"
#include "numbers/plain_number.h"
#include "vocabulary/recursion.h"
#include "vocabulary/references.h"
#include "vocabulary/signals.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <type_traits>
#include <utility>

namespace quarna {

namespace {

constexpr std::size_t sideBySide = 8;

/// Beyond, a nest is walked: it may have no end.
constexpr std::size_t deepest = 64;

/// How much is read between two looks for signals. Lists with fewer elements are not held: there is no look meanwhile.
constexpr long segment = 4096;

/// Neighbours along the first dimension, all of one length.
class Neighbours {
public:
    Neighbours(PyObject* single, long length) : m_count(1), m_length(length) { m_lists[0] = single; }

    /// Of a parent, the children from `first` on.
    Neighbours(PyObject* parent, long first, long count, long length)
        : m_count(static_cast<std::size_t>(count)), m_length(length)
    {
        auto const items = exactItems(parent);
        m_isComplete = first + count <= static_cast<long>(items.size());
        std::copy_n(items.begin() + (m_isComplete ? first : 0), m_isComplete ? count : 0, m_lists.begin());
        m_isComplete = m_isComplete && isUniform();
    }

    /// Of each of the parents, the child at `place`.
    Neighbours(Neighbours const& parents, long place, long length)
        : m_count(parents.m_count), m_length(length)
    {
        m_isComplete = parents.isUniform();
        for (std::size_t i = 0; m_isComplete && i < m_count; ++i) {
            m_lists[i] = exactItems(parents.m_lists[i])[static_cast<std::size_t>(place)];
        }
        m_isComplete = m_isComplete && isUniform();
    }

    /// False if a parent is too short, or if one of them is no exact list or tuple of the length.
    bool isComplete() const { return m_isComplete; }

    std::size_t count() const { return m_count; }
    PyObject* operator[](std::size_t place) const { return m_lists[place]; }

    /// Whether they are still what they were: Python code may have run meanwhile.
    bool isUniform() const
    {
        return std::all_of(m_lists.begin(), m_lists.begin() + m_count, [this](PyObject* list) {
            return static_cast<long>(exactItems(list).size()) == m_length;
        });
    }

    /// Keeps them alive for as long as this lives.
    void hold()
    {
        std::transform(m_lists.begin(), m_lists.begin() + m_count, m_held.begin(), &Reference::borrow);
    }

private:
    std::array<PyObject*, sideBySide> m_lists;
    std::array<Reference, sideBySide> m_held;
    std::size_t m_count;
    long m_length;
    bool m_isComplete = true;
};

template <class T>
class PlainNestReader {
public:
    PlainNestReader(std::span<long const> shape, bool coerceToLogical)
        : m_shape(shape), m_strides(shape.size(), 1), m_below(shape.size(), 1),
          m_coerceToLogical(coerceToLogical)
    {
        for (std::size_t level = 1; level < shape.size(); ++level) {
            m_strides[level] = m_strides[level - 1] * shape[level - 1];
        }
        for (std::size_t level = shape.size(); level-- > 0;) {
            m_below[level] = shape[level] * (level + 1 < shape.size() ? m_below[level + 1] : 1);
        }
    }

    /// The nest itself, and single lists that hold all the rest.
    Road readWhole(PyObject* list, std::size_t level, T* destination)
    {
        if (level + 1 == m_shape.size()) {
            return readRows(Neighbours(list, m_shape[level]), destination);
        }
        if (m_shape[level] == 1) {
            Neighbours only(list, 0, 1, m_shape[level + 1]);
            only.hold();
            return only.isComplete() ? readWhole(only[0], level + 1, destination) : Road::Declined;
        }
        Road road = Road::Taken;
        for (long first = 0; road == Road::Taken && first < m_shape[level]; first += long{sideBySide}) {
            long const count = std::min(long{sideBySide}, m_shape[level] - first);
            road = read(Neighbours(list, first, count, m_shape[level + 1]), level + 1, destination + first);
            road = road == Road::Taken && !look() ? Road::Failed : road;
        }
        return road;
    }

private:
    // At the levels above, all lists are held that will be looked at again.
    Road read(Neighbours&& lists, std::size_t level, T* destination)
    {
        if (!lists.isComplete()) {
            return Road::Declined;
        }
        bool const isRow = level + 1 == m_shape.size();
        if (!isRow || m_below[level] >= segment) {
            lists.hold();
        }
        return isRow ? readRows(lists, destination) : readChildren(lists, level, destination);
    }

    Road readChildren(Neighbours const& lists, std::size_t level, T* destination)
    {
        Road road = Road::Taken;
        for (long place = 0; road == Road::Taken && place < m_shape[level]; ++place) {
            road = read(Neighbours(lists, place, m_shape[level + 1]), level + 1,
                        destination + place * m_strides[level]);
            road = road == Road::Taken && !look() ? Road::Failed : road;
        }
        return road;
    }

    Road readRows(Neighbours const& rows, T* destination)
    {
        long const length = m_shape.back();
        auto const count = static_cast<long>(rows.count());
        for (long start = 0; start < length;) {
            long const end = std::min(length, start + segment);
            bool const areWhole = start == 0 || rows.isUniform();
            if (!areWhole || !convertColumns(rows, start, end, destination)) {
                return Road::Declined;
            }
            m_unlooked += (end - start) * count;
            start = end;
            if (length >= segment && !look()) {
                return Road::Failed;
            }
        }
        return Road::Taken;
    }

    bool convertColumns(Neighbours const& rows, long start, long end, T* destination) const
    {
        std::array<PyObject* const*, sideBySide> items;
        for (std::size_t i = 0; i < rows.count(); ++i) {
            items[i] = exactItems(rows[i]).data();
        }
        long const stride = m_strides.back();
        if (rows.count() == sideBySide) {
            return convert(std::integral_constant<std::size_t, sideBySide>(), items, start, end, stride,
                           destination);
        }
        if (rows.count() == 1) {
            return convert(std::integral_constant<std::size_t, 1>(), items, start, end, stride, destination);
        }
        return convert(rows.count(), items, start, end, stride, destination);
    }

    // What the loop reads is its own: nothing that it stores can change it.
    template <class Count>
    bool convert(Count count, std::array<PyObject* const*, sideBySide> const items, long start, long end,
                 long stride, T* destination) const
    {
        bool const coerceToLogical = m_coerceToLogical;
        for (long column = start; column < end; ++column) {
            T* const place = destination + column * stride;
            for (std::size_t i = 0; i < count; ++i) {
                auto const plain = plainElement<T>(items[i][column], coerceToLogical);
                if (!plain.isPlain) [[unlikely]] {
                    return false;
                }
                place[i] = plain.value;
            }
        }
        return true;
    }

    // Handlers may run here: only where whatever is looked at afterwards is held.
    bool look() { return m_watch.passed(std::exchange(m_unlooked, 0)); }

    std::span<long const> m_shape;
    std::vector<long> m_strides;  // of the destination
    std::vector<long> m_below;    // how many elements a list of a level holds
    bool m_coerceToLogical;
    SignalWatch m_watch;
    long m_unlooked = 0;
};

bool letsGoAsDeep(std::size_t levels)
{
    if (levels == 0) {
        return true;
    }
    RecursionLevel const level("");
    return level && letsGoAsDeep(levels - 1);
}

}  // namespace

template <class T>
std::vector<long> shapeOfPlainNest(PyObject* nest, bool coerceToLogical)
{
    std::vector<long> shape;
    PyObject* first = nest;
    for (auto items = exactItems(first); !items.empty() && shape.size() <= deepest;
         items = exactItems(first)) {
        shape.push_back(static_cast<long>(items.size()));
        first = items.front();
    }
    if (!shape.empty() && shape.size() <= deepest && plainElement<T>(first, coerceToLogical).isPlain &&
        letsGoAsDeep(shape.size())) {
        return shape;
    }
    PyErr_Clear();
    return {};
}

template <class T>
Road readPlainNest(PyObject* nest, std::span<long const> shape, bool coerceToLogical, T* destination)
{
    return PlainNestReader<T>(shape, coerceToLogical).readWhole(nest, 0, destination);
}

#define QUARNA_ARRAY_TYPE(number, name, element)                           \
    template std::vector<long> shapeOfPlainNest<element>(PyObject*, bool); \
    template Road readPlainNest<element>(PyObject*, std::span<long const>, bool, element*);
#include "data/array_types.def"

}  // namespace quarna
