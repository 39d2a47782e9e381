// The rules of a class's constructor: which arguments go together, and what shape comes of them.
#pragma once

#include "vocabulary/python.h"

#include "construction/constructor_arguments.h"
#include "construction/nest_reader.h"
#include "vocabulary/errors.h"
#include "wrapper/store.h"

#include <optional>
#include <vector>

namespace quarna {

template <class T>
class FinalConstructorParser {
public:
    /// The array that a constructor call describes; empty with an exception set.
    std::optional<LooseArray> makeArray(ConstructorArguments const& arguments);

private:
    // What returns a bool returns false with an exception set.
    std::optional<LooseArray> makeZeros();
    std::optional<LooseArray> makeFromValues();
    bool processSizeKwarg(PyObject* size);
    bool processInitializer(PyObject* initializer);
    bool processVectorKwarg(PyObject* vector);
    bool reserveForSize();

    bool handleSingleSingletonDimensionEdgeCase();
    bool specifiedAndCalculatedDimensionsMatch();
    Refused refuseDimensions(PyObject* exceptionClass) const;

    NestReader<T> m_reader;
    std::vector<long> m_specifiedDims;   // from 'size'; empty if that was not given
    std::vector<long> m_calculatedDims;  // from the values
    bool m_isColumnMajor = false;
};

}  // namespace quarna
