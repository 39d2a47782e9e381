// Comparison operators, str() and repr().
#include "compare_and_text/equality.h"
#include "compare_and_text/text.h"
#include "elements/element.h"
#include "module/slots.h"
#include "vocabulary/errors.h"

#include <optional>
#include <type_traits>

namespace quarna {

namespace {

template <class T>
PyObject* makeText(PyObject* self, bool asRepr)
{
    QCppPyArray const* const array = requireArray(self);
    if (array == nullptr) {
        return nullptr;
    }
    return withElementForm<T>(array->isComplex(), [&]<class Element>(std::type_identity<Element>) {
        return textOf<Element>(*array, asRepr);
    });
}

}  // namespace

template <class T>
PyObject* QCPyArray_RichCompare(PyObject* self, PyObject* other, int operation)
{
    QCppPyArray const* const left = requireArray(self);
    if (left == nullptr) {
        return nullptr;
    }
    if (operation != Py_EQ && operation != Py_NE) {
        return refuse(PyExc_NotImplementedError, "inequality operators not supported.");
    }
    bool equal = false;
    if (QCPyArray_Check(other)) {
        QCppPyArray const* const right = requireArray(other);
        auto const answer = right != nullptr ? areEqual<T>(*left, *right) : std::nullopt;
        if (!answer) {
            return nullptr;
        }
        equal = *answer;
    }
    return PyBool_FromLong(equal == (operation == Py_EQ));
}

template <class T>
PyObject* QCPyArray_GetStr(PyObject* self)
{
    return makeText<T>(self, false);
}

template <class T>
PyObject* QCPyArray_GetRepr(PyObject* self)
{
    return makeText<T>(self, true);
}

#define QUARNA_CLASS(suffix, attribute, element, code)                            \
    template PyObject* QCPyArray_RichCompare<element>(PyObject*, PyObject*, int); \
    template PyObject* QCPyArray_GetStr<element>(PyObject*);                      \
    template PyObject* QCPyArray_GetRepr<element>(PyObject*);
#include "vocabulary/class_table.def"

}  // namespace quarna
