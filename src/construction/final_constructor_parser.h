// From Python values to the elements and dimensions of one array: one parser for each construction or assignment.
//
// A nest of sequences is walked once, depth first. The walk yields the elements in nested order (the last index
// fastest), the dimensions, and the proof that the nest is rectangular:
//   - the children of one sequence are compared before they are walked: all scalars, or all of one length;
//   - a sequence's length is compared with that of the sequences walked before it at the same depth;
//   - a scalar's depth is compared with that of the first scalar;
//   - at the end the elements are counted, since Python code may change the nest under the walk.
// Any object that CPython takes for a sequence is one; a str is refused wherever it stands. Where a sequence's
// elements lie in memory as numbers, they are read there, to the same result and the same refusals.
#pragma once

#include "vocabulary/python.h"

#include "construction/constructor_arguments.h"
#include "construction/element_conversion.h"
#include "construction/element_source.h"
#include "data/array_factory.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

template <class T>
class FinalConstructorParser {
public:
    /// `findElements` knows the sequences of rooms above this one.
    explicit FinalConstructorParser(quarna::FindElements findElements) : m_findElements(findElements) {}

    /// The array that a constructor call describes; empty with an exception set.
    std::optional<quarna::data::TypedArray<T>> makeTypedArray(quarna::ConstructorArguments const& arguments);

    /// Takes in a scalar or a nest of sequences; false with an exception set. `coerceToLogical` goes to the
    /// conversion of every scalar.
    bool flattenWithUnspecifiedDimensions(PyObject* object, bool coerceToLogical);

    /// What the walk found. A lone scalar has the dimensions 1, 1, a sequence one dimension for each level.
    std::vector<long> const& calculatedDims() const { return m_calculatedDims; }
    std::span<T const> elements() const
    {
        return {m_elements.get(), static_cast<std::size_t>(m_elementCount)};
    }

private:
    bool takeValue(PyObject* object);
    bool takeSequence(PyObject* sequence);
    bool walkSequence(PyObject* sequence);
    bool takeElements(quarna::ElementSource const& source);
    long countBeforeRagged(std::span<quarna::StridedDimension const> levels) const;
    bool storeElements(quarna::ElementSource const& source, long count);
    bool copyElements(quarna::ElementSource const& source);
    void openSequence(long length);
    bool closeSequence(long length);
    bool takeScalar(CValueResult<T> const& scalar);
    bool placeFirstScalar();
    void store(T value);
    bool reserveBuffer(std::optional<long> count);
    bool refuseForMemory(std::optional<long> count) const;

    bool takeArguments(quarna::ConstructorArguments const& arguments);
    bool processSize(std::vector<long> dims);
    bool processSizeKwarg(PyObject* size);
    bool processInitializer(PyObject* initializer);
    bool processVectorKwarg(PyObject* vector);
    bool takeVectorItems(PyObject* vector, Py_ssize_t count);
    bool fillWithZeros();

    bool handleSingleSingletonDimensionEdgeCase();
    bool specifiedAndCalculatedDimensionsMatch();
    bool refuseDimensions(PyObject* exceptionClass) const;

    quarna::FindElements m_findElements;
    std::vector<long> m_specifiedDims;   // from 'size'; empty if that was not given
    std::vector<long> m_calculatedDims;  // from the values
    quarna::data::ArrayFactory m_factory;
    quarna::data::ElementBuffer<T> m_elements{nullptr, [](void*) {}};
    long m_capacity = 0;
    long m_elementCount = 0;  // may exceed the capacity in a nest that will be refused
    bool m_bufferReserved = false;
    bool m_isColumnMajor = false;
    bool m_coerceToLogical = true;
    PyObject* m_refusalClass = nullptr;  // in place of the one that a refused scalar names
    std::size_t m_scalarDepth = 0;       // of the first scalar; 0 before it
    std::vector<long> m_lengthsAtDepth;  // of the open sequences
};
