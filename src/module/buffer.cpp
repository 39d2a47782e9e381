// The buffer protocol: every export is the whole mirror of the wrapper, read-only.
#include "module/slots.h"
#include "vocabulary/errors.h"
#include "vocabulary/references.h"

namespace {

int refuse(Py_buffer* view, PyObject* exceptionClass, const char* text)
{
    view->obj = nullptr;
    setError(exceptionClass, text);
    return -1;
}

}  // namespace

int QCPyArray_GetBuffer(PyObject* self, Py_buffer* view, int flags)
{
    QCppPyArray const* const array = quarna::requireArray(self);
    if (array == nullptr) {
        if (view != nullptr) {
            view->obj = nullptr;
        }
        return -1;
    }
    if (view == nullptr) {
        setError(PyExc_RuntimeError, "null pointer to view object null.");
        return -1;
    }
    QDArrayWrapper& wrapper = *array->getQDAWrapper();
    if ((flags & PyBUF_WRITABLE) != 0 && wrapper.isReadOnly() != 0) {
        return refuse(view, PyExc_ValueError, "underlying buffer is not writable.");
    }
    char* const format = (flags & PyBUF_FORMAT) != 0 ? wrapper.format() : nullptr;
    if ((flags & PyBUF_FORMAT) != 0 && format == nullptr) {
        return refuse(view, PyExc_ValueError, "format field is null.");
    }
    if ((flags & PyBUF_C_CONTIGUOUS) == PyBUF_C_CONTIGUOUS) {
        return refuse(view, PyExc_ValueError, "underlying buffer not C-contiguous.");
    }
    view->buf = wrapper.buf();
    view->len = wrapper.getBufferSizeInBytes();
    view->itemsize = wrapper.getElementSizeInBytes();
    view->readonly = wrapper.isReadOnly();
    view->ndim = wrapper.getNumberOfDimensions();
    view->format = format;
    // Consumers only read these; a reshape, which would move them, is refused while the export lasts.
    view->shape = const_cast<Py_ssize_t*>(wrapper.shape().data());
    view->strides = const_cast<Py_ssize_t*>(wrapper.bytewiseStrides());
    view->suboffsets = const_cast<Py_ssize_t*>(wrapper.suboffsets());
    view->obj = quarna::Reference::borrow(self).release();
    wrapper.incrementExportCount();
    return 0;
}

void QCPyArray_ReleaseBuffer(PyObject* self, Py_buffer*) noexcept
{
    getQCPyArrayFromPyObject(self)->array->getQDAWrapper()->decrementExportCount();
}
