// Sequences whose elements lie in memory as numbers.
#include "construction/memory_elements.h"

#include "data/array_type.h"
#include "indexing/array_source.h"
#include "indexing/qcpp_py_array.h"
#include "vocabulary/array_array.h"
#include "vocabulary/quarna_py_array.h"
#include "vocabulary/references.h"
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

/// An attribute of a range, which runs no Python code; empty beyond 64 bits.
std::optional<long> rangeAttribute(PyObject* range, const char* name)
{
    Reference const value = Reference::steal(PyObject_GetAttrString(range, name));
    int overflow = 0;
    long const number = value ? PyLong_AsLongAndOverflow(value.get(), &overflow) : -1;
    return value && overflow == 0 ? std::optional(number) : std::nullopt;
}

}  // namespace

MemoryElements::MemoryElements(PyObject* object)
{
    if (QCPyArray_Check(object)) {
        takeArray(object);
    } else if (isPlainExporter(object)) {
        takeBuffer(object);
    } else if (PyRange_Check(object)) {
        takeRange(object);
    }
}

MemoryElements::~MemoryElements() noexcept(false)
{
    if (m_view.obj != nullptr && threadHasPython()) {
        PyBuffer_Release(&m_view);
    }
}

bool MemoryElements::refresh()
{
    if (m_array == nullptr) {
        return true;
    }
    QCppPyArray const& array = *getQCPyArrayFromPyObject(m_array)->array;
    m_source->block = array.getQDAWrapper()->buf();
    return array.requireReshapeCount(m_reshapes);
}

void MemoryElements::takeArray(PyObject* object)
{
    m_source = elementsOfArray(object);
    if (m_source) {
        m_array = object;
        m_reshapes = getQCPyArrayFromPyObject(object)->array->getQDAWrapper()->reshapeCount();
    }
}

void MemoryElements::takeBuffer(PyObject* object)
{
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

// A range keeps no elements: each is where it stands between start and stop.
void MemoryElements::takeRange(PyObject* object)
{
    Py_ssize_t const length = PyObject_Size(object);
    auto const start = rangeAttribute(object, "start");
    auto const stop = rangeAttribute(object, "stop");
    auto const step = rangeAttribute(object, "step");
    if (length <= 0 || !start || !stop || !step) {
        PyErr_Clear();
        return;
    }
    m_source = ElementSource{data::ArrayType::INT64, nullptr, {*start, {}}};
    m_source->view.dimensions.push_back({length, *step});
}

}  // namespace quarna
