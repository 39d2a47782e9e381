// The method reshape.
#include "module/slots.h"
#include "vocabulary/arithmetic.h"
#include "vocabulary/errors.h"
#include "vocabulary/python_values.h"
#include "vocabulary/references.h"

#include <limits>
#include <optional>
#include <vector>

using quarna::Reference;

namespace {

constexpr char dimensionsText[] = "reshape() must be passed a nonempty sequence of nonnegative integers.";

PyObject* refuse(PyObject* exceptionClass, const char* text)
{
    setError(exceptionClass, text);
    return nullptr;
}

/// One dimension; empty with an exception set.
std::optional<long> dimensionAt(PyObject* sequence, Py_ssize_t position)
{
    Reference const item = Reference::steal(PySequence_GetItem(sequence, position));
    if (!item) {
        quarna::setComposedError(PyExc_RuntimeError, "Item ", position,
                                 " could not be retrieved from the value passed to reshape().");
        return std::nullopt;
    }
    Py_ssize_t const dimension = pyObjectIsLong(item.get()) ? PyLong_AsSsize_t(item.get()) : -1;
    if (dimension < 0) {
        refuse(PyExc_ValueError, dimensionsText);
        return std::nullopt;
    }
    return dimension;
}

/// At least two dimensions, without the ones at the end; empty with an exception set.
std::vector<long> getDimsFromReshapeArg(PyObject* arg)
{
    Py_ssize_t const count = arg != Py_None && PySequence_Check(arg) ? PySequence_Size(arg) : 0;
    if (count < 2) {
        // A length that could not be had has left its own exception.
        if (count >= 0) {
            refuse(PyExc_ValueError, dimensionsText);
        }
        return {};
    }
    std::vector<long> dims;
    for (Py_ssize_t position = 0; position < count; ++position) {
        auto const dimension = dimensionAt(arg, position);
        if (!dimension) {
            return {};
        }
        dims.push_back(*dimension);
    }
    while (dims.size() > 2 && dims.back() == 1) {
        dims.pop_back();
    }
    return dims;
}

}  // namespace

PyObject* QCPyArray_Reshape(PyObject* self, PyObject* args, PyObject* kwds)
{
    QCppPyArray const* const array = quarna::requireArray(self);
    if (array == nullptr) {
        return nullptr;
    }
    if (!array->indicesAreEmpty()) {
        return refuse(PyExc_RuntimeError, "reshape() not supported for a partial array.");
    }
    if (args == nullptr || args == Py_None || PyTuple_GET_SIZE(args) == 0) {
        return refuse(PyExc_ValueError, dimensionsText);
    }
    auto const dims = getDimsFromReshapeArg(PyTuple_GET_SIZE(args) == 1 ? PyTuple_GET_ITEM(args, 0) : args);
    if (dims.empty()) {
        return nullptr;
    }
    QDArrayWrapper& wrapper = *array->getQDAWrapper();
    // A product beyond 63 bits shows as the largest that there is.
    long const count = quarna::checkedProduct(dims).value_or(std::numeric_limits<long>::max());
    if (count != wrapper.getNumberOfElements()) {
        quarna::setComposedError(QCPyError::shapeErr,
                                 "number of elements specified by arguments to reshape() (", count,
                                 ") does not match current number (", wrapper.getNumberOfElements(), ").");
        return nullptr;
    }
    if (kwds != nullptr && PyDict_GET_SIZE(kwds) > 0) {
        return refuse(PyExc_ValueError, "reshape() does not accept keyword arguments.");
    }
    if (wrapper.exportCount() > 0) {
        return refuse(PyExc_BufferError, "existing exports of data: the array cannot be reshaped.");
    }
    quarna::data::ArrayFactory factory;
    wrapper.reshape(dims, factory, 'F', quarna::data::MemoryLayout::COLUMN_MAJOR);
    return Reference::borrow(self).release();
}
