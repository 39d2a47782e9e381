// The type objects, filled by name: a slot that is not named is absent in every version of CPython.
#include "module/type_objects.h"

#include "indexing/array_object.h"
#include "module/guard.h"
#include "module/slots.h"

namespace quarna {

namespace {

constexpr PyTypeObject blankType()
{
    PyVarObject const heads[] = {PyVarObject_HEAD_INIT(nullptr, 0)};
    PyTypeObject type{};
    type.ob_base = heads[0];
    type.tp_flags = Py_TPFLAGS_DEFAULT;
    return type;
}

template <class T>
constexpr PySequenceMethods makeSequenceMethods()
{
    PySequenceMethods methods{};
    methods.sq_length = guarded<&QCPyArray_NumElemsInFirstDim>;
    methods.sq_item = guarded<&QCPyArray_GetItem<T>>;
    return methods;
}

template <class T>
constexpr PyMappingMethods makeMappingMethods()
{
    PyMappingMethods methods{};
    methods.mp_length = guarded<&QCPyArray_NumElemsInFirstDim>;
    methods.mp_subscript = guarded<&QCPyArray_GetViaIndex<T>>;
    methods.mp_ass_subscript = guarded<&QCPyArray_SetViaIndex<T>>;
    return methods;
}

constexpr PyBufferProcs makeBufferProcs()
{
    PyBufferProcs procs{};
    procs.bf_getbuffer = &QCPyArray_GetBuffer;
    procs.bf_releasebuffer = &QCPyArray_ReleaseBuffer;
    return procs;
}

template <class T>
constinit PySequenceMethods QCPyArray_SequenceMethods = makeSequenceMethods<T>();
template <class T>
constinit PyMappingMethods QCPyArray_MappingMethods = makeMappingMethods<T>();
constinit PyBufferProcs QCPyArray_BufferProcs = makeBufferProcs();

// The name and the documentation come at import, from the class table.
template <class T>
constexpr PyTypeObject makeArrayType()
{
    PyTypeObject type = blankType();
    type.tp_basicsize = sizeof(QCPyArray);
    type.tp_alloc = &allocateArrayMemory;
    type.tp_dealloc = &QCPyArray_Delete;
    type.tp_repr = guarded<&QCPyArray_GetRepr<T>>;
    type.tp_str = guarded<&QCPyArray_GetStr<T>>;
    type.tp_as_sequence = &QCPyArray_SequenceMethods<T>;
    type.tp_as_mapping = &QCPyArray_MappingMethods<T>;
    type.tp_as_buffer = &QCPyArray_BufferProcs;
    type.tp_richcompare = guarded<&QCPyArray_RichCompare<T>>;
    type.tp_iter = guarded<&QCPyArray_GetIter>;
    type.tp_methods = QCPyArray_Methods;
    type.tp_getset = QCPyArray_GetSetMethods;
    type.tp_new = guarded<&QCPyArray_New<T>>;
    return type;
}

constexpr PyTypeObject makeIteratorType()
{
    PyTypeObject type = blankType();
    type.tp_name = "QCPyIter";
    type.tp_doc = "Internal iterator object";
    type.tp_basicsize = sizeof(QCPyIter);
    type.tp_alloc = &QCPyIter_Alloc;
    type.tp_dealloc = &QCPyIter_Delete;
    type.tp_iter = guarded<&QCPyIter_GetIter>;
    type.tp_iternext = guarded<&QCPyIter_GetIterNext>;
    return type;
}

}  // namespace

constinit PyTypeObject QCPyIter_Type = makeIteratorType();

#define QUARNA_CLASS(suffix, attribute, element, code) \
    constinit PyTypeObject QCPyArray_Type_##suffix = makeArrayType<element>();
#include "vocabulary/class_table.def"

}  // namespace quarna

PyTypeObject* const TypeObjectPointers[] = {
#define QUARNA_CLASS(suffix, attribute, element, code) &quarna::QCPyArray_Type_##suffix,
#include "vocabulary/class_table.def"
};

const char TypeAsChar[] = {
#define QUARNA_CLASS(suffix, attribute, element, code) code,
#include "vocabulary/class_table.def"
};
