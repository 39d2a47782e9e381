// Arrays in and out as handles of the data-array library.
#include "module/c_interface.h"

#include "data/element_dispatch.h"
#include "indexing/array_object.h"
#include "module/guard.h"
#include "module/slots.h"

#include <concepts>
#include <type_traits>
#include <utility>

namespace {

/// The class of a data array's elements; `valid` is false if no class holds them.
struct TypeAndComplexity {
    bool valid;
    SupportedArrayEnum arrayClass;
    bool isComplex;
};

TypeAndComplexity getTypeAndComplexityFromArrayType(quarna::data::ArrayType type)
{
    try {
        return quarna::data::visitElementType(type, []<class T>(std::type_identity<T>) -> TypeAndComplexity {
            return {!std::same_as<T, char16_t>, quarna::classOf<T>, quarna::Complex<T>};
        });
    } catch (quarna::Exception const&) {
        return {};
    }
}

PyObject* QCPyArray_QDAImplToQCPyArray(void* impl)
{
    if (impl == nullptr) {
        setError(PyExc_RuntimeError, "null data pointer.");
        return nullptr;
    }
    quarna::data::Array array(static_cast<quarna::data::impl::ArrayImpl*>(impl));
    auto const [valid, arrayClass, isComplex] = getTypeAndComplexityFromArrayType(array.getType());
    if (!valid) {
        setError(PyExc_RuntimeError, "invalid type.");
        return nullptr;
    }
    return quarna::newArrayObject(std::move(array), arrayClass, isComplex);
}

void* QCPyArray_QCPyArrayToQDAImpl(PyObject* object)
{
    QCppPyArray* const array = quarna::requireArray(object);
    if (array == nullptr) {
        return nullptr;
    }
    quarna::data::Array const& whole = array->getQDAWrapper()->array();
    if (array->indicesAreEmpty()) {
        return whole.handle();
    }
    // The array keeps what it gathered, so the handle outlives this function's share.
    auto const gathered =
        quarna::data::visitElementType(whole.getType(), [&]<class T>(std::type_identity<T>) {
            return array->getIndexedArrayAsQDA<T>(true);
        });
    return gathered ? gathered->handle() : nullptr;
}

}  // namespace

quarna_api const QCPyArrayAPI::table = {quarna::guarded<&QCPyArray_QDAImplToQCPyArray>,
                                        quarna::guarded<&QCPyArray_QCPyArrayToQDAImpl>};
