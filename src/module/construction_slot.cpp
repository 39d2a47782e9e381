// tp_new: an array from the arguments of a call.
#include "construction/constructor.h"
#include "indexing/array_object.h"
#include "module/slots.h"
#include "vocabulary/array_array.h"

#include <type_traits>
#include <utility>

namespace quarna {

template <class T>
PyObject* QCPyArray_New(PyTypeObject*, PyObject* args, PyObject* kwds)
{
    // The classes of an import that failed can be found by way of their base class.
    if (ArrayArray::s_arrayClass == nullptr) {
        return refuse(PyExc_RuntimeError, notImportedText);
    }
    ConstructorArguments arguments;
    if (!parseConstructorArguments(args, kwds, arguments)) {
        return nullptr;
    }
    if (Logical<T> && arguments.isComplex) {
        return refuse(PyExc_TypeError, "logical arrays must not be complex.");
    }
    return withElementForm<T>(arguments.isComplex,
                              [&]<class Element>(std::type_identity<Element>) -> PyObject* {
                                  auto array = FinalConstructorParser<Element>().makeArray(arguments);
                                  if (!array) {
                                      return nullptr;
                                  }
                                  QDArrayWrapperPtr wrapper(new QDArrayWrapper(*std::move(array)));
                                  return newArrayObject(std::move(wrapper), classOf<T>, Complex<Element>);
                              });
}

#define QUARNA_CLASS(suffix, attribute, element, code) \
    template PyObject* QCPyArray_New<element>(PyTypeObject*, PyObject*, PyObject*);
#include "vocabulary/class_table.def"

}  // namespace quarna
