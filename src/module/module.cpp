// The module's entry point: classes, exceptions and the capsule.
#include "module/c_interface.h"
#include "module/guard.h"
#include "module/type_objects.h"
#include "vocabulary/array_class.h"
#include "vocabulary/errors.h"
#include "vocabulary/references.h"

#include <cstddef>
#include <iostream>
#include <utility>

using quarna::Reference;

namespace {

#define MODULE_NAME "quarnamultidimarrayforpython"

PyMethodDef noFunctions[] = {{nullptr, nullptr, 0, nullptr}};

PyModuleDef makeModuleDefinition()
{
    PyModuleDef definition{};
    definition.m_base = PyModuleDef_HEAD_INIT;
    definition.m_name = MODULE_NAME;
    definition.m_doc = MODULE_NAME;
    definition.m_size = -1;
    definition.m_methods = noFunctions;
    return definition;
}

PyModuleDef moduleDefinition = makeModuleDefinition();

constexpr const char* dottedNames[] = {
#define QUARNA_CLASS(suffix, attribute, element, code) "quarna." #attribute,
#include "vocabulary/class_table.def"
};

/// The class array.array; null with RuntimeError set.
Reference importArrayClass()
{
    Reference const module = Reference::steal(PyImport_ImportModule("array"));
    if (!module) {
        setError(PyExc_RuntimeError, "unable to import array module.");
        return {};
    }
    Reference arrayClass = Reference::steal(PyObject_GetAttrString(module.get(), "array"));
    if (!arrayClass) {
        setError(PyExc_RuntimeError, "unable to retrieve array.array class.");
    } else if (!PyCallable_Check(arrayClass.get())) {
        setError(PyExc_RuntimeError, "array.array class is not callable.");
        return {};
    }
    return arrayClass;
}

bool add(PyObject* module, const char* name, Reference object)
{
    if (!object || PyModule_AddObject(module, name, object.get()) < 0) {
        return false;
    }
    // The module has taken the reference over.
    static_cast<void>(object.release());
    return true;
}

bool addType(PyObject* module, const char* name, PyTypeObject& type, const char* failure)
{
    if (PyType_Ready(&type) < 0) {
        std::cerr << failure << std::endl;
        return false;
    }
    return add(module, name, Reference::borrow(reinterpret_cast<PyObject*>(&type)));
}

PyObject* init_types(PyObject* module)
{
    if (module == nullptr) {
        std::cerr << "Could not initialize module." << std::endl;
        return nullptr;
    }
    for (std::size_t row = 0; row < quarna::classCount; ++row) {
        PyTypeObject& type = *TypeObjectPointers[row];
        type.tp_doc = quarna::classNames[row];
        type.tp_name = dottedNames[row];
        if (!addType(module, quarna::classNames[row], type, "Could not initialize type.")) {
            return nullptr;
        }
    }
    return addType(module, "QCPyIter", QCPyIter_Type, "Could not initialize QCPyIter_Type.") ? module
                                                                                             : nullptr;
}

/// Makes an exception class; the module's dictionary keeps it alive for the borrowed pointer.
bool addException(PyObject* module, const char* name, const char* dottedName, PyObject*& borrowed)
{
    Reference exception = Reference::steal(PyErr_NewException(dottedName, nullptr, nullptr));
    borrowed = exception.get();
    return add(module, name, std::move(exception));
}

PyObject* initialise()
{
    Reference arrayClass = importArrayClass();
    if (!arrayClass) {
        return nullptr;
    }
    Reference module = Reference::steal(PyModule_Create(&moduleDefinition));
    PyObject* const dictionaryOwner = init_types(module.get());
    bool const complete =
        dictionaryOwner != nullptr &&
        addException(dictionaryOwner, "ShapeError", "qnexceptions.ShapeError", QCPyError::shapeErr) &&
        addException(dictionaryOwner, "SizeError", "qnexceptions.SizeError", QCPyError::sizeErr) &&
        add(dictionaryOwner, "_capi",
            Reference::steal(
                PyCapsule_New(const_cast<quarna_api*>(&QCPyArrayAPI::table), QUARNA_CAPSULE_NAME, nullptr)));
    if (!complete) {
        return nullptr;
    }
    ArrayArray::s_arrayClass = arrayClass.release();
    return module.release();
}

}  // namespace

// CPython 3.7 declares an entry point without its visibility.
extern "C" QUARNA_EXPORT PyObject* PyInit_quarnamultidimarrayforpython()
{
    return quarna::guarded<&initialise>();
}
