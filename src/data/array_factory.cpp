// Making blocks and arrays through the library's factory.
#include "data/array_factory.h"

#include "data/operation.h"

#include <cstdint>

namespace quarna::data {

using detail::call;
using detail::FunctionType;

namespace {

template <class T>
constexpr auto typeNumber = static_cast<std::int32_t>(arrayTypeOf<T>);

template <class T, class Make>
TypedArray<T> makeTypedArray(Make make)
{
    return TypedArray<T>::madeAs(Array(detail::makeOwned<FunctionType::destroy_array>(make)));
}

}  // namespace

ArrayFactory::ArrayFactory()
    : m_impl(detail::makeOwned<FunctionType::destroy_factory>(
                 &detail::made<FunctionType::create_factory, impl::ArrayFactoryImpl>)
                 .release(),
             [](impl::ArrayFactoryImpl* factory) {
                 detail::operation<FunctionType::destroy_factory>()(factory);
             })
{}

template <class T>
ElementBuffer<T> ArrayFactory::createBuffer(std::size_t count)
{
    void* block = nullptr;
    quarna_deleter deleter = nullptr;
    call<FunctionType::create_buffer>(m_impl.get(), &block, &deleter, typeNumber<T>, count);
    if (block == nullptr) {
        detail::throwIfError(static_cast<int>(ExceptionType::OutOfMemory), {});
    }
    return {static_cast<T*>(block), deleter};
}

template <class T>
TypedArray<T> ArrayFactory::createArrayFromBuffer(std::vector<std::size_t> const& dimensions,
                                                  ElementBuffer<T> buffer, MemoryLayout layout)
{
    auto* const adoptInOrder = detail::optionalOperation<FunctionType::adopt_buffer_in_order>();
    if (adoptInOrder == nullptr && layout == MemoryLayout::ROW_MAJOR) {
        throw detail::DataException<ExceptionType::FeatureNotSupported>("Row-major buffers require QR3s");
    }
    // Looked up before the block leaves its owner, so that nothing is lost if the library has neither.
    auto* const adopt = adoptInOrder == nullptr ? detail::operation<FunctionType::adopt_buffer>() : nullptr;
    return makeTypedArray<T>([&] {
        auto* const deleter = buffer.get_deleter();
        void* const block = buffer.release();
        impl::ArrayImpl* array = nullptr;
        if (adoptInOrder != nullptr) {
            detail::callAndCheck(adoptInOrder, m_impl.get(), typeNumber<T>, dimensions.data(),
                                 dimensions.size(), block, deleter, &array,
                                 static_cast<std::int32_t>(layout));
        } else {
            detail::callAndCheck(adopt, m_impl.get(), typeNumber<T>, dimensions.data(), dimensions.size(),
                                 block, deleter, &array);
        }
        return array;
    });
}

template <class T>
TypedArray<T> ArrayFactory::createScalar(T value)
{
    return makeTypedArray<T>([&] {
        return detail::made<FunctionType::create_scalar, impl::ArrayImpl>(m_impl.get(), typeNumber<T>,
                                                                          static_cast<void const*>(&value));
    });
}

template <class T>
TypedArray<T> ArrayFactory::createArray(std::vector<std::size_t> const& dimensions)
{
    return makeTypedArray<T>([&] {
        return detail::made<FunctionType::create_array, impl::ArrayImpl>(
            m_impl.get(), typeNumber<T>, dimensions.data(), dimensions.size());
    });
}

#define QUARNA_ARRAY_TYPE(number, name, element)                                      \
    template ElementBuffer<element> ArrayFactory::createBuffer<element>(std::size_t); \
    template TypedArray<element> ArrayFactory::createArrayFromBuffer<element>(        \
        std::vector<std::size_t> const&, ElementBuffer<element>, MemoryLayout);       \
    template TypedArray<element> ArrayFactory::createScalar<element>(element);        \
    template TypedArray<element> ArrayFactory::createArray<element>(std::vector<std::size_t> const&);
#include "data/array_types.def"

}  // namespace quarna::data
