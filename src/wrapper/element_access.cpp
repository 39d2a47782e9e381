// The one way by which a value enters an existing array, and a read past the mirror.
#include "vocabulary/errors.h"
#include "wrapper/apply_numeric_visitor.h"
#include "wrapper/element_object.h"
#include "wrapper/qd_array_wrapper.h"

#include <cstddef>
#include <span>

template <class T>
quarna::WritableElements<T> QDArrayWrapper::writableElements()
{
    return {quarna::data::writableElementsOf<T>(m_array), m_buf.get()};
}

template <class T>
bool QDArrayWrapper::setElementFromIndices(std::span<long const> indices, T value)
{
    long const offset = getElementOffsetFromIndices(indices);
    if (offset < 0 || offset >= m_numElems) {
        setError(PyExc_RuntimeError, "unable to set value.");
        return false;
    }
    writableElements<T>().set(offset, value);
    return true;
}

PyObject* QDArrayWrapper::getElementAsPyObjectFromElementOffset(long offset) const
{
    return quarna::data::apply_numeric_visitor(
        m_array, [&]<class T>(quarna::data::TypedArray<T> const& array) -> PyObject* {
            if (offset < 0 || static_cast<std::size_t>(offset) >= array.elementCount()) {
                return nullptr;
            }
            return quarna::makeNumber(quarna::loadElement<T>(array.elements() + offset));
        });
}

#define QUARNA_ARRAY_TYPE(number, name, element)                                            \
    template quarna::WritableElements<element> QDArrayWrapper::writableElements<element>(); \
    template bool QDArrayWrapper::setElementFromIndices<element>(std::span<long const>, element);
#include "data/array_types.def"
