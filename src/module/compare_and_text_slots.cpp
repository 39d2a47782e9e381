// Comparison operators, str() and repr().
#include "module/slots.h"
#include "vocabulary/element.h"
#include "vocabulary/errors.h"

#include <optional>
#include <type_traits>

namespace {

template <class T>
PyObject* makeText(PyObject* self, bool asRepr)
{
    QCppPyArray const* const array = quarna::requireArray(self);
    if (array == nullptr) {
        return nullptr;
    }
    return quarna::withElementForm<T>(array->isComplex(), [&]<class Element>(std::type_identity<Element>) {
        auto const text = array->getStrAsStdString<Element>(asRepr, false);
        return text ? PyUnicode_FromStringAndSize(text->data(), static_cast<Py_ssize_t>(text->size()))
                    : nullptr;
    });
}

}  // namespace

template <class T>
PyObject* QCPyArray_RichCompare(PyObject* self, PyObject* other, int operation)
{
    QCppPyArray const* const left = quarna::requireArray(self);
    if (left == nullptr) {
        return nullptr;
    }
    if (operation != Py_EQ && operation != Py_NE) {
        setError(PyExc_NotImplementedError, "inequality operators not supported.");
        return nullptr;
    }
    bool equal = false;
    if (QCPyArray_Check(other)) {
        QCppPyArray const* const right = quarna::requireArray(other);
        auto const answer = right != nullptr ? left->isEqualTo<T>(*right) : std::nullopt;
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
