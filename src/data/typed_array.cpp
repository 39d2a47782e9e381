// The handle on an array of known element type.
#include "data/typed_array.h"

#include "data/operation.h"

#include <cstddef>
#include <cstdint>
#include <utility>

namespace quarna::data {

using detail::call;
using detail::FunctionType;

namespace {

template <class T>
void requireElementType(Array const& array)
{
    bool compatible = false;
    call<FunctionType::types_are_compatible>(static_cast<std::int32_t>(arrayTypeOf<T>),
                                             static_cast<std::int32_t>(array.getType()), &compatible);
    if (!compatible) {
        throw detail::DataException<ExceptionType::ArrayTypeMismatch>(
            "Can't convert the Array to this TypedArray");
    }
}

template <class T>
T* elementAt(impl::ArrayImpl* array, detail::Position position, bool writable)
{
    detail::requireHandle(array);
    auto const iterator = detail::makeIterator(array, position, writable);
    return static_cast<T*>(detail::elementAddress(iterator.get(), arrayTypeOf<T>));
}

}  // namespace

template <class T>
TypedArray<T>::TypedArray(Array const& array) : Array(array)
{
    requireElementType<T>(*this);
}

template <class T>
TypedArray<T>::TypedArray(Array&& array) : Array((requireElementType<T>(array), std::move(array)))
{}

template <class T>
T* TypedArray<T>::writableElements()
{
    makeUnshared();
    return elementAt<T>(handle(), detail::Position::First, true);
}

template <class T>
T const* TypedArray<T>::elements() const
{
    return elementAt<T>(handle(), detail::Position::First, false);
}

template <class T>
TypedIterator<T const> TypedArray<T>::end() const noexcept
{
    return TypedIterator<T const>(elementAt<T>(handle(), detail::Position::PastLast, false));
}

template <class T>
ElementBuffer<T> TypedArray<T>::release()
{
    void* block = nullptr;
    quarna_deleter deleter = nullptr;
    call<FunctionType::release_buffer>(handle(), isSoleHolder(), &block, &deleter);
    return {static_cast<T*>(block), deleter};
}

template <class T>
ReferenceHolder TypedArray<T>::operator[](std::size_t index) requires Complex<T>
{
    makeUnshared();
    return detail::makeReference<FunctionType::get_reference>(handle(), index);
}

void detail::setElement(ReferenceImpl* reference, void const* real, void const* imaginary, int type)
{
    call<FunctionType::set_complex>(reference, type, real, imaginary);
}

#define QUARNA_ARRAY_TYPE(number, name, element) template class TypedArray<element>;
#include "data/array_types.def"

}  // namespace quarna::data
