// The method __reduce__: a class, a dictionary of options, and the elements as a nested list.
#include "module/slots.h"
#include "vocabulary/errors.h"
#include "vocabulary/references.h"

namespace quarna {

PyObject* QCPyArray_Reduce(PyObject* self, PyObject*)
{
    QCppPyArray const* const array = requireArray(self);
    if (array == nullptr) {
        return nullptr;
    }
    Reference const options = Reference::steal(PyDict_New());
    if (!options) {
        return nullptr;
    }
    if (array->isComplex() && PyDict_SetItemString(options.get(), "is_complex", Py_True) == -1) {
        return refuse(PyExc_RuntimeError, "unable to insert 'is_complex' value into dict.");
    }
    Reference const contents = Reference::steal(array->getAllContentsAsPyList());
    if (!contents) {
        return nullptr;
    }
    Reference const arguments = Reference::steal(PyTuple_Pack(2, options.get(), contents.get()));
    if (!arguments) {
        return nullptr;
    }
    return PyTuple_Pack(2, TypeObjectPointers[rowOf(array->getSupportedArrayEnum())], arguments.get());
}

}  // namespace quarna
