// The buffer protocol: every export is the whole block of the wrapper, read-only, and stays in its place.
#include "module/guard.h"
#include "module/slots.h"
#include "vocabulary/errors.h"
#include "vocabulary/references.h"
#include "wrapper/qd_array_wrapper.h"

namespace quarna {

namespace {

int fillView(PyObject* self, Py_buffer* view, int flags)
{
    QCppPyArray const* const array = requireArray(self);
    if (array == nullptr) {
        return -1;
    }
    if (view == nullptr) {
        return refuse(PyExc_RuntimeError, "null pointer to view object null.");
    }
    QDArrayWrapper& wrapper = *array->getQDAWrapper();
    if ((flags & PyBUF_WRITABLE) != 0 && wrapper.isReadOnly() != 0) {
        return refuse(PyExc_ValueError, "underlying buffer is not writable.");
    }
    char* const format = (flags & PyBUF_FORMAT) != 0 ? wrapper.format() : nullptr;
    if ((flags & PyBUF_FORMAT) != 0 && format == nullptr) {
        return refuse(PyExc_ValueError, "format field is null.");
    }
    if ((flags & PyBUF_C_CONTIGUOUS) == PyBUF_C_CONTIGUOUS) {
        return refuse(PyExc_ValueError, "underlying buffer not C-contiguous.");
    }
    view->buf = wrapper.pinnedBuf();
    view->len = wrapper.getBufferSizeInBytes();
    view->itemsize = wrapper.getElementSizeInBytes();
    view->readonly = wrapper.isReadOnly();
    view->ndim = wrapper.getNumberOfDimensions();
    view->format = format;
    // Consumers only read these; a reshape, which would move them, is refused while the export lasts.
    view->shape = const_cast<Py_ssize_t*>(wrapper.shape().data());
    view->strides = const_cast<Py_ssize_t*>(wrapper.bytewiseStrides().data());
    view->suboffsets = nullptr;
    view->obj = Reference::borrow(self).release();
    wrapper.incrementExportCount();
    return 0;
}

}  // namespace

// Whatever a request fails of, its view has no owner then.
int QCPyArray_GetBuffer(PyObject* self, Py_buffer* view, int flags)
{
    if (view != nullptr) {
        view->obj = nullptr;
    }
    return guarded<&fillView>(self, view, flags);
}

void QCPyArray_ReleaseBuffer(PyObject* self, Py_buffer*) noexcept
{
    getQCPyArrayFromPyObject(self)->array->getQDAWrapper()->decrementExportCount();
}

}  // namespace quarna
