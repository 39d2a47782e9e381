// The handle on an array of unknown element type.
#include "data/array.h"

#include "data/operation.h"

#include <cstdint>

namespace quarna::data {

using detail::call;
using detail::FunctionType;

Array::Array() noexcept
    : Array(detail::makeOwned<FunctionType::destroy_array>(&call<FunctionType::create_empty_array>))
{}

// The deleter is looked up now: a handle that exists can be released.
Array::Array(impl::ArrayImpl* impl) : m_impl(impl, detail::Destroy<FunctionType::destroy_array>()) {}

ArrayType Array::getType() const
{
    std::int32_t type = -1;
    call<FunctionType::get_type>(handle(), &type);
    return ArrayType{type};
}

std::vector<std::size_t> Array::dimensions() const
{
    std::size_t count = 0;
    std::size_t const* lengths = nullptr;
    call<FunctionType::get_dimensions>(handle(), &count, &lengths);
    return {lengths, lengths + count};
}

std::size_t Array::elementCount() const
{
    return call<FunctionType::get_element_count>(handle());
}

void Array::makeUnshared()
{
    detail::requireHandle(handle());
    impl::ArrayImpl* unshared = nullptr;
    if (!call<FunctionType::unshare>(handle(), isSoleHolder(), &unshared)) {
        return;
    }
    if (unshared == nullptr) {
        detail::throwIfError(static_cast<int>(ExceptionType::OutOfMemory), {});
    }
    m_impl = Array(unshared).m_impl;
}

void* Array::address(ArrayType type) const
{
    detail::requireHandle(handle());
    return detail::firstElement(handle(), type, false);
}

}  // namespace quarna::data
