// The attributes of all classes.
#include "module/guard.h"
#include "module/slots.h"
#include "module/values.h"
#include "vocabulary/errors.h"

#include <utility>
#include <vector>

namespace quarna {

namespace {

PyObject* QCPyArray_GetArraySize(PyObject* self, void*)
{
    QCppPyArray const* const array = requireArray(self);
    if (array == nullptr) {
        return nullptr;
    }
    if (array->getNumberOfDimensions() == 0) {
        return makeTuple({});
    }
    if (!array->requireUsable()) {
        return nullptr;
    }
    std::vector<long> lengths;
    for (StridedDimension const& dimension : array->selection().dimensions) {
        lengths.push_back(dimension.length);
    }
    return makeTuple(std::move(lengths));
}

PyObject* QCPyArray_GetElementSize(PyObject* self, void*)
{
    QCppPyArray const* const array = requireArray(self);
    if (array == nullptr) {
        return nullptr;
    }
    PyObject* const size = PyLong_FromSsize_t(array->getQDAWrapper()->getElementSizeInBytes());
    if (size == nullptr) {
        setError(PyExc_RuntimeError, "unable to return size of element.");
    }
    return size;
}

PyObject* QCPyArray_GetRealAsAttrib(PyObject* self, void*)
{
    return QCPyArray_Real(self, nullptr);
}

PyObject* QCPyArray_GetImagAsAttrib(PyObject* self, void*)
{
    return QCPyArray_Imag(self, nullptr);
}

PyObject* QCPyArray_GetNoncomplexAsAttrib(PyObject* self, void*)
{
    return QCPyArray_Noncomplex(self, nullptr);
}

PyObject* QCPyArray_GetIsComplexAsAttrib(PyObject* self, void*)
{
    QCppPyArray const* const array = requireArray(self);
    return array != nullptr ? PyBool_FromLong(array->isComplex()) : nullptr;
}

}  // namespace

PyGetSetDef QCPyArray_GetSetMethods[] = {
    {"size", guarded<&QCPyArray_GetArraySize>, nullptr, "dimensions", nullptr},
    {"_size", guarded<&QCPyArray_GetArraySize>, nullptr, "dimensions", nullptr},
    {"itemsize", guarded<&QCPyArray_GetElementSize>, nullptr, "size of an element in bytes", nullptr},
    {"_real", guarded<&QCPyArray_GetRealAsAttrib>, nullptr, "real part of elements; equivalent to real()",
     nullptr},
    {"_imag", guarded<&QCPyArray_GetImagAsAttrib>, nullptr,
     "imaginary part of elements; equivalent to imag()", nullptr},
    {"_data", guarded<&QCPyArray_GetNoncomplexAsAttrib>, nullptr,
     "elements in storage order; equivalent to noncomplex()", nullptr},
    {"_is_complex", guarded<&QCPyArray_GetIsComplexAsAttrib>, nullptr, "whether array is complex", nullptr},
    {nullptr, nullptr, nullptr, nullptr, nullptr},
};

}  // namespace quarna
