// Arrays in and out as handles of the data-array library.
#include "module/c_interface.h"

#include "data/element_dispatch.h"
#include "indexing/array_object.h"
#include "module/guard.h"
#include "module/slots.h"

#include <concepts>
#include <type_traits>
#include <utility>

namespace quarna {

namespace {

/// The class of a data array's elements; `valid` is false if no class holds them.
struct TypeAndComplexity {
    bool valid;
    SupportedArrayEnum arrayClass;
    bool isComplex;
};

TypeAndComplexity getTypeAndComplexityFromArrayType(data::ArrayType type)
{
    try {
        return data::visitElementType(type, []<class T>(std::type_identity<T>) -> TypeAndComplexity {
            return {!std::same_as<T, char16_t>, classOf<T>, Complex<T>};
        });
    } catch (Exception const&) {
        return {};
    }
}

PyObject* QCPyArray_QDAImplToQCPyArray(void* impl)
{
    if (impl == nullptr) {
        return refuse(PyExc_RuntimeError, "null data pointer.");
    }
    data::Array array(static_cast<data::impl::ArrayImpl*>(impl));
    auto const [valid, arrayClass, isComplex] = getTypeAndComplexityFromArrayType(array.getType());
    if (!valid) {
        return refuse(PyExc_RuntimeError, "invalid type.");
    }
    return newArrayObject(QDArrayWrapper::ofSeenArray(std::move(array)), arrayClass, isComplex);
}

void* QCPyArray_QCPyArrayToQDAImpl(PyObject* object)
{
    QCppPyArray* const array = requireArray(object);
    return array != nullptr ? array->seenHandle() : nullptr;
}

}  // namespace

quarna_api const QCPyArrayAPI::table = {guarded<&QCPyArray_QDAImplToQCPyArray>,
                                        guarded<&QCPyArray_QCPyArrayToQDAImpl>};

}  // namespace quarna
