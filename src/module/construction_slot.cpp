// tp_new: an array from the arguments of a call.
#include "construction/final_constructor_parser.h"
#include "indexing/array_object.h"
#include "indexing/array_source.h"
#include "module/slots.h"
#include "vocabulary/array_class.h"

#include <type_traits>
#include <utility>

template <class T>
PyObject* QCPyArray_New(PyTypeObject*, PyObject* args, PyObject* kwds)
{
    // The classes of an import that failed can be found by way of their base class.
    if (ArrayArray::s_arrayClass == nullptr) {
        setError(PyExc_RuntimeError, quarna::notImportedText);
        return nullptr;
    }
    quarna::ConstructorArguments arguments;
    if (!quarna::parseConstructorArguments(args, kwds, arguments)) {
        return nullptr;
    }
    if (quarna::Logical<T> && arguments.isComplex) {
        setError(PyExc_TypeError, "logical arrays must not be complex.");
        return nullptr;
    }
    return quarna::withElementForm<T>(
        arguments.isComplex, [&]<class Element>(std::type_identity<Element>) -> PyObject* {
            auto array = FinalConstructorParser<Element>(&quarna::elementsOfArray).makeTypedArray(arguments);
            if (!array) {
                return nullptr;
            }
            return quarna::newArrayObject(*std::move(array), quarna::classOf<T>, quarna::Complex<Element>);
        });
}

#define QUARNA_CLASS(suffix, attribute, element, code) \
    template PyObject* QCPyArray_New<element>(PyTypeObject*, PyObject*, PyObject*);
#include "vocabulary/class_table.def"
