// The one way by which a value enters an existing array.
#include "vocabulary/errors.h"
#include "wrapper/qd_array_wrapper.h"

#include <complex>
#include <cstdint>

using namespace quarna;

template <class T>
WritableElements<T> QDArrayWrapper::writableElements()
{
    m_store.makeOwn(type());
    if (m_seen == nullptr) {
        return {m_store.elements(), nullptr};
    }
    m_seen->makeOwn(type());
    return {m_store.elements(), m_seen->elements()};
}

template <class T>
bool QDArrayWrapper::setElementFromIndices(std::span<long const> indices, T value)
{
    long const offset = getElementOffsetFromIndices(indices);
    if (offset < 0 || offset >= getNumberOfElements()) {
        return refuse(PyExc_RuntimeError, "unable to set value.");
    }
    writableElements<T>().set(offset, value);
    return true;
}

#define QUARNA_ARRAY_TYPE(number, name, element)                                    \
    template WritableElements<element> QDArrayWrapper::writableElements<element>(); \
    template bool QDArrayWrapper::setElementFromIndices<element>(std::span<long const>, element);
#include "data/array_types.def"
