// From Python values to the elements and dimensions of one array: one reader for each construction or assignment.
//
// A nest of sequences is walked once, depth first. The walk yields the elements in nested order (the last index
// fastest), the dimensions, and the proof that the nest is rectangular:
//   - the children of one sequence are compared before they are walked: all scalars, or all of one length;
//   - a sequence's length is compared with that of the sequences walked before it at the same depth;
//   - a scalar's depth is compared with that of the first scalar;
//   - at the end the elements are counted, since Python code may change the nest under the walk.
// Any object that CPython takes for a sequence is one; a str is refused wherever it stands. Where a sequence's
// elements lie in memory as numbers, they are read there, to the same result and the same refusals.
//
// Two kinds of object need no walk: a plain nest, and an object that lies in memory as a whole. They are tried first,
// to the same result, but in storage order. Whatever they do not take is walked from the start.
//
// What returns a bool returns false with an exception set.
#pragma once

#include "vocabulary/python.h"

#include "construction/memory_elements.h"
#include "construction/road.h"
#include "data/array_factory.h"
#include "data/element_source.h"
#include "elements/strided_view.h"
#include "numbers/element_conversion.h"
#include "vocabulary/signals.h"

#include <cstddef>
#include <optional>
#include <span>
#include <utility>
#include <vector>

namespace quarna {

template <class T>
class NestReader {
public:
    /// Takes in a scalar or a nest of sequences. `coerceToLogical` goes to the conversion of every scalar.
    bool read(PyObject* object, bool coerceToLogical);

    /// Takes in `count` scalars of a sequence that is no str and must not hold sequences.
    bool readVector(PyObject* vector, Py_ssize_t count);

    /// Makes room for the elements, once; a count that is empty needs more than 63 bits.
    bool reserve(std::optional<long> count);

    /// What the walk found. A lone scalar has the dimensions 1, 1, a sequence one dimension for each level.
    std::vector<long> const& dims() const { return m_dims; }
    std::span<T const> elements() const
    {
        return {m_elements.get(), static_cast<std::size_t>(m_elementCount)};
    }
    WalkOrder order() const { return m_order; }
    /// The same elements, put into nested order if they are not. Throws.
    std::span<T const> elementsInNestedOrder();

    /// The block of the elements, which is no longer the reader's.
    data::ElementBuffer<T> takeElements() { return std::move(m_elements); }
    data::ArrayFactory& factory() { return m_factory; }

private:
    Road takeAtOnce(PyObject* object);
    Road takePlainNest(PyObject* nest);
    Road takeFromMemory(MemoryElements& elements);
    bool reserveExactly(std::span<long const> shape);
    Road takeIf(Road road, std::vector<long> shape);

    bool takeValue(PyObject* object);
    bool takeSequence(PyObject* sequence);
    bool takePlainRow(std::span<PyObject* const> items);
    bool walkSequence(PyObject* sequence);
    bool takeItems(PyObject* sequence, long length);
    bool takeVectorItem(PyObject* item);
    bool takeElements(ElementSource const& source);
    long countBeforeRagged(std::span<StridedDimension const> levels) const;
    bool storeElements(ElementSource const& source, long count);
    void openSequence(long length);
    bool closeSequence(long length);
    bool takeScalar(CValueResult<T> const& scalar);
    bool placeFirstScalar();
    void store(T value);

    std::vector<long> m_dims;
    data::ArrayFactory m_factory;
    data::ElementBuffer<T> m_elements{nullptr, [](void*) {}};
    long m_capacity = 0;
    long m_elementCount = 0;  // may exceed the capacity in a nest that will be refused
    bool m_isReserved = false;
    bool m_hasNoRoom = false;  // a reservation was refused
    WalkOrder m_order = WalkOrder::Nested;
    SignalWatch m_watch;
    bool m_coerceToLogical = true;
    PyObject* m_refusalClass = nullptr;  // in place of the one that a refused scalar names
    std::size_t m_scalarDepth = 0;       // of the first scalar; 0 before it
    std::vector<long> m_lengthsAtDepth;  // of the open sequences
};

}  // namespace quarna
