// The method reshape.
#include "construction/dimensions.h"
#include "elements/arithmetic.h"
#include "module/slots.h"
#include "vocabulary/errors.h"
#include "vocabulary/references.h"
#include "wrapper/qd_array_wrapper.h"

#include <limits>
#include <optional>
#include <vector>

namespace quarna {

namespace {

constexpr char dimensionsText[] = "reshape() must be passed a nonempty sequence of nonnegative integers.";

/// At least two dimensions, without the ones at the end; empty with an exception set.
std::optional<std::vector<long>> getDimsFromReshapeArg(PyObject* arg)
{
    Py_ssize_t const count = arg != Py_None && PySequence_Check(arg) ? PySequence_Size(arg) : 0;
    if (count < 0) {
        return std::nullopt;
    }
    if (count < 2) {
        setError(PyExc_ValueError, dimensionsText);
        return std::nullopt;
    }
    auto dims = readDimensions(arg, count,
                               {" could not be retrieved from the value passed to reshape().",
                                PyExc_ValueError, dimensionsText, dimensionsText});
    if (dims) {
        dropTrailingOnes(*dims);
    }
    return dims;
}

}  // namespace

PyObject* QCPyArray_Reshape(PyObject* self, PyObject* args, PyObject* kwds)
{
    QCppPyArray const* const array = requireArray(self);
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
    if (!dims) {
        return nullptr;
    }
    QDArrayWrapper& wrapper = *array->getQDAWrapper();
    // A product beyond 63 bits shows as the largest that there is.
    long const count = checkedProduct(*dims).value_or(std::numeric_limits<long>::max());
    if (count != wrapper.getNumberOfElements()) {
        return refuseWith(QCPyError::shapeErr, "number of elements specified by arguments to reshape() (",
                          count, ") does not match current number (", wrapper.getNumberOfElements(), ").");
    }
    if (kwds != nullptr && PyDict_GET_SIZE(kwds) > 0) {
        return refuse(PyExc_ValueError, "reshape() does not accept keyword arguments.");
    }
    if (wrapper.exportCount() > 0) {
        return refuse(PyExc_BufferError, "existing exports of data: the array cannot be reshaped.");
    }
    wrapper.reshape(*dims, 'F');
    return Reference::borrow(self).release();
}

}  // namespace quarna
