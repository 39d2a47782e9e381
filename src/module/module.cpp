// The module's entry point: classes, exceptions and the capsule.
#include "module/c_interface.h"
#include "module/guard.h"
#include "module/type_objects.h"
#include "vocabulary/array_array.h"
#include "vocabulary/errors.h"
#include "vocabulary/references.h"

#include <cstddef>
#include <iostream>
#include <utility>

namespace quarna {

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
    for (std::size_t row = 0; row < classCount; ++row) {
        PyTypeObject& type = *TypeObjectPointers[row];
        type.tp_doc = classNames[row];
        type.tp_name = dottedNames[row];
        if (!addType(module, classNames[row], type, "Could not initialize type.")) {
            return nullptr;
        }
    }
    return addType(module, "QCPyIter", QCPyIter_Type, "Could not initialize QCPyIter_Type.") ? module
                                                                                             : nullptr;
}

/// The exception class that an earlier initialisation made, or a new one; null with an exception set.
Reference exceptionClass(PyObject* kept, const char* dottedName)
{
    return kept != nullptr ? Reference::borrow(kept)
                           : Reference::steal(PyErr_NewException(dottedName, nullptr, nullptr));
}

/// What the module's code uses by itself is kept until the process ends, whatever becomes of a module's names.
void keep(PyObject*& kept, Reference object)
{
    if (kept == nullptr) {
        kept = object.release();
    }
}

PyObject* initialise()
{
    Reference arrayClass = importArrayClass();
    if (!arrayClass) {
        return nullptr;
    }
    Reference module = Reference::steal(PyModule_Create(&moduleDefinition));
    if (init_types(module.get()) == nullptr) {
        return nullptr;
    }
    Reference shapeError = exceptionClass(QCPyError::shapeErr, "qnexceptions.ShapeError");
    if (!add(module.get(), "ShapeError", Reference::borrow(shapeError.get()))) {
        return nullptr;
    }
    Reference sizeError = exceptionClass(QCPyError::sizeErr, "qnexceptions.SizeError");
    if (!add(module.get(), "SizeError", Reference::borrow(sizeError.get()))) {
        return nullptr;
    }
    auto* const table = const_cast<quarna_api*>(&QCPyArrayAPI::table);
    if (!add(module.get(), "_capi", Reference::steal(PyCapsule_New(table, QUARNA_CAPSULE_NAME, nullptr)))) {
        return nullptr;
    }
    keep(QCPyError::shapeErr, std::move(shapeError));
    keep(QCPyError::sizeErr, std::move(sizeError));
    keep(ArrayArray::s_arrayClass, std::move(arrayClass));
    return module.release();
}

}  // namespace

// CPython 3.7 declares an entry point without its visibility.
extern "C" QUARNA_EXPORT PyObject* PyInit_quarnamultidimarrayforpython()
{
    return guarded<&initialise>();
}

}  // namespace quarna
