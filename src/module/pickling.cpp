// The method __reduce__: a class, a dictionary of options, and the elements as a nested list.
#include "data/element_dispatch.h"
#include "module/slots.h"
#include "vocabulary/errors.h"
#include "vocabulary/references.h"

#include <type_traits>

using quarna::Reference;

PyObject* QCPyArray_Reduce(PyObject* self, PyObject*)
{
    QCppPyArray const* const array = quarna::requireArray(self);
    if (array == nullptr) {
        return nullptr;
    }
    Reference const options = Reference::steal(PyDict_New());
    if (!options) {
        return nullptr;
    }
    if (array->isComplex() && PyDict_SetItemString(options.get(), "is_complex", Py_True) == -1) {
        setError(PyExc_RuntimeError, "unable to insert 'is_complex' value into dict.");
        return nullptr;
    }
    Reference const contents = Reference::steal(quarna::data::visitElementType(
        array->getQDAWrapper()->array().getType(),
        [&]<class T>(std::type_identity<T>) { return array->getAllContentsAsPyList<T>(); }));
    if (!contents) {
        return nullptr;
    }
    Reference const arguments = Reference::steal(PyTuple_Pack(2, options.get(), contents.get()));
    if (!arguments) {
        return nullptr;
    }
    return PyTuple_Pack(2, TypeObjectPointers[quarna::rowOf(array->getSupportedArrayEnum())],
                        arguments.get());
}
