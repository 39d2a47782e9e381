// The elements of Python's own one-dimensional exporters.
#include "construction/buffer_elements.h"

#include "data/array_type.h"
#include "vocabulary/array_array.h"
#include "vocabulary/thread.h"
#include "wrapper/buffer_format.h"

namespace quarna {
namespace {

// Of these it is known that a buffer item is what subscripting gives.
bool isPlainExporter(PyObject* object)
{
    return PyBytes_CheckExact(object) || PyByteArray_CheckExact(object) || PyMemoryView_Check(object) ||
           reinterpret_cast<PyObject*>(Py_TYPE(object)) == ArrayArray::s_arrayClass;
}

}  // namespace

BufferElements::BufferElements(PyObject* object)
{
    if (!isPlainExporter(object)) {
        return;
    }
    if (PyObject_GetBuffer(object, &m_view, PyBUF_FORMAT | PyBUF_STRIDES) != 0) {
        // The walk meets the same fault and says so in its own words.
        PyErr_Clear();
        m_view.obj = nullptr;
        return;
    }
    data::ArrayType type{};
    if (m_view.ndim != 1 || format2classid(m_view.format, type) != 0 ||
        m_view.itemsize != static_cast<Py_ssize_t>(data::elementSize(type)) ||
        m_view.strides[0] % m_view.itemsize != 0) {
        return;
    }
    m_source = ElementSource{type, m_view.buf, {}};
    m_source->view.dimensions.push_back({m_view.shape[0], m_view.strides[0] / m_view.itemsize});
}

BufferElements::~BufferElements() noexcept(false)
{
    if (m_view.obj != nullptr && threadHasPython()) {
        PyBuffer_Release(&m_view);
    }
}

}  // namespace quarna
