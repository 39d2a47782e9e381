// The methods of all classes, but for reshape and pickling.
#include "data/element_dispatch.h"
#include "elements/element_load.h"
#include "indexing/array_object.h"
#include "module/guard.h"
#include "module/slots.h"
#include "module/values.h"
#include "vocabulary/array_array.h"
#include "vocabulary/errors.h"

#include <cstdint>
#include <cstring>
#include <optional>
#include <type_traits>
#include <utility>

namespace quarna {

namespace {

PyObject* QCPyArray_BufferInfo(PyObject* self, PyObject*)
{
    QCppPyArray const* const array = requireArray(self);
    if (array == nullptr) {
        return nullptr;
    }
    auto const address = reinterpret_cast<std::uintptr_t>(array->getQDAWrapper()->pinnedBuf());
    return Py_BuildValue("Kl", static_cast<unsigned long long>(address), array->getNumberOfElements());
}

PyObject* QCPyArray_GetBytewiseStrides(PyObject* self, PyObject*)
{
    QCppPyArray const* const array = requireArray(self);
    if (array == nullptr) {
        return nullptr;
    }
    auto const strides = array->getQDAWrapper()->bytewiseStrides();
    return makeTuple({strides.begin(), strides.end()});
}

PyObject* QCPyArray_ToMemoryView(PyObject* self, PyObject*)
{
    return requireArray(self) != nullptr ? PyMemoryView_FromObject(self) : nullptr;
}

// The elements of a row, as a one-dimensional array of the source's class.
PyObject* newRow(QCppPyArray const& source, std::optional<LooseArray> elements)
{
    if (!elements) {
        return nullptr;
    }
    QDArrayWrapperPtr const wrapper(new QDArrayWrapper(*std::move(elements)));
    return newArrayObject(QCppPyArray(wrapper, source.getSupportedArrayEnum(), false), IntegerIndexItem{0});
}

PyObject* QCPyArray_realOrImag(PyObject* self, bool real)
{
    QCppPyArray const* const array = requireArray(self);
    return array != nullptr ? newRow(*array, array->realOrImag(real)) : nullptr;
}

/// The selected elements one after the other, as a new bytes object.
Reference bytesOfSelection(QCppPyArray const& array, StridedView const& view)
{
    return data::visitElementType(array.getQDAWrapper()->type(), [&]<class T>(std::type_identity<T>) {
        Reference bytes =
            Reference::steal(PyBytes_FromStringAndSize(nullptr, view.count() * Py_ssize_t{sizeof(T)}));
        if (bytes) {
            char* next = PyBytes_AS_STRING(bytes.get());
            void const* const block = array.getQDAWrapper()->buf();
            walkElements(view, WalkOrder::Nested, [&](long offset) {
                T const element = loadElementAt<T>(block, offset);
                std::memcpy(next, &element, sizeof(T));
                next += sizeof(T);
            });
        }
        return bytes;
    });
}

}  // namespace

PyObject* QCPyArray_Real(PyObject* self, PyObject*)
{
    return QCPyArray_realOrImag(self, true);
}

PyObject* QCPyArray_Imag(PyObject* self, PyObject*)
{
    return QCPyArray_realOrImag(self, false);
}

PyObject* QCPyArray_Noncomplex(PyObject* self, PyObject*)
{
    QCppPyArray const* const array = requireArray(self);
    return array != nullptr ? newRow(*array, array->noncomplex()) : nullptr;
}

PyObject* QCPyArray_Clone(PyObject* self, PyObject*)
{
    QCppPyArray* const array = requireArray(self);
    if (array == nullptr) {
        return nullptr;
    }
    auto contents = array->wrapperOfGathered();
    return contents ? newArrayObject(std::move(contents), array->getSupportedArrayEnum(), array->isComplex())
                    : nullptr;
}

PyObject* QCPyArray_ToArrayArray(PyObject* self, PyObject*)
{
    constexpr char refusal[] = "toarray() can be called only on a one-dimensional sequence.";
    QCppPyArray const* const array = requireArray(self);
    if (array == nullptr || !array->requireUsable()) {
        return nullptr;
    }
    // array.array takes what iteration yields: real numbers, or nothing at all.
    StridedView view = array->selection();
    if (view.dimensions.front().length > 0 && (view.dimensions.size() > 1 || array->isComplex())) {
        setError(PyExc_RuntimeError, refusal);
        return nullptr;
    }
    Reference const bytes = bytesOfSelection(*array, view);
    if (!bytes) {
        return nullptr;
    }
    auto const code = static_cast<unsigned char>(TypeAsChar[rowOf(array->getSupportedArrayEnum())]);
    PyObject* const result = PyObject_CallFunction(ArrayArray::s_arrayClass, "CO", int{code}, bytes.get());
    if (result == nullptr) {
        setError(PyExc_RuntimeError, refusal);
    }
    return result;
}

// The table's type has no room for keywords; CPython casts the function back by its flags.
static PyCFunction withKeywords(PyCFunctionWithKeywords function)
{
    return reinterpret_cast<PyCFunction>(reinterpret_cast<void (*)()>(function));
}

PyMethodDef QCPyArray_Methods[] = {
    {"reshape", withKeywords(guarded<&QCPyArray_Reshape>), METH_VARARGS | METH_KEYWORDS,
     "reshape changes the dimensions of an N-dimensional array while preserving the values"},
    {"buffer_info", guarded<&QCPyArray_BufferInfo>, METH_NOARGS,
     "buffer_info returns a two-element tuple containing the address of the buffer and the number of "
     "elements"},
    {"get_bytewise_strides", guarded<&QCPyArray_GetBytewiseStrides>, METH_NOARGS,
     "get_bytewise_strides returns a tuple containing the bytewise strides"},
    {"clone", guarded<&QCPyArray_Clone>, METH_NOARGS,
     "clone returns an independent copy of the input object"},
    {"real", guarded<&QCPyArray_Real>, METH_NOARGS,
     "real returns the real part of the input object as a 1-by-N array"},
    {"imag", guarded<&QCPyArray_Imag>, METH_NOARGS,
     "imag returns the imaginary part of the input object as a 1-by-N array"},
    {"noncomplex", guarded<&QCPyArray_Noncomplex>, METH_NOARGS,
     "noncomplex returns the the input object (which must be noncomplex) as a 1-by-N array"},
    {"toarray", guarded<&QCPyArray_ToArrayArray>, METH_NOARGS,
     "toarray returns an array.array initialized from the input object"},
    {"tomemoryview", guarded<&QCPyArray_ToMemoryView>, METH_NOARGS,
     "tomemoryview returns a memoryview initialized from the input object"},
    {"__reduce__", guarded<&QCPyArray_Reduce>, METH_NOARGS, "__reduce__ pickles the input object"},
    {nullptr, nullptr, 0, nullptr},
};

}  // namespace quarna
