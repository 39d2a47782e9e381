// Reading elements: one number, or a nested list of all that is selected.
#include "data/element_dispatch.h"
#include "elements/element_load.h"
#include "indexing/qcpp_py_array.h"
#include "numbers/python_number.h"
#include "vocabulary/recursion.h"
#include "vocabulary/references.h"

#include <complex>
#include <cstddef>
#include <cstdint>
#include <type_traits>

using namespace quarna;

namespace {

// Making a list can start the garbage collector, and with it Python code that reshapes the array or moves its elements.
// Hence the count of reshapes is looked at after each list, before its elements are, and the block at each element.
template <class T>
class NestedListBuilder {
public:
    explicit NestedListBuilder(QCppPyArray const& array)
        : m_array(array), m_wrapper(*array.getQDAWrapper()), m_reshapes(m_wrapper.reshapeCount()),
          m_view(array.selection())
    {}

    Reference build() const { return listAt(0, m_view.offset); }

private:
    Reference listAt(std::size_t level, long offset) const
    {
        RecursionLevel const recursion(" while listing an array");
        auto const [length, stride] = m_view.dimensions[level];
        Reference list = recursion ? Reference::steal(PyList_New(length)) : Reference();
        if (!list || !m_array.requireReshapeCount(m_reshapes)) {
            return {};
        }
        bool const isInnermost = level + 1 == m_view.dimensions.size();
        for (long i = 0; i < length; ++i) {
            Reference item = isInnermost ? numberAt(offset) : listAt(level + 1, offset);
            if (!item) {
                return {};
            }
            PyList_SET_ITEM(list.get(), i, item.release());
            offset += stride;
        }
        return list;
    }

    Reference numberAt(long offset) const
    {
        return Reference::steal(makeNumber(loadElementAt<T>(m_wrapper.buf(), offset)));
    }

    QCppPyArray const& m_array;
    QDArrayWrapper const& m_wrapper;
    unsigned long m_reshapes;
    StridedView m_view;
};

}  // namespace

template <class T>
PyObject* QCppPyArray::getNumericPyObject(long index) const
{
    return makeNumber(loadElement<T>(addressOf(index)));
}

PyObject* QCppPyArray::getAllContentsAsPyList() const
{
    if (!requireUsable()) {
        return nullptr;
    }
    return data::visitElementType(m_wrapper->type(), [this]<class T>(std::type_identity<T>) {
        return NestedListBuilder<T>(*this).build().release();
    });
}

#define QUARNA_ARRAY_TYPE(number, name, element) \
    template PyObject* QCppPyArray::getNumericPyObject<element>(long) const;
#include "data/array_types.def"
