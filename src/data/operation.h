// Calling the library: one template for each numbered operation, which drops no result.
#pragma once

#include "data/exceptions.h"
#include "data/opaque.h"
#include "data/typed_iterator.h"
#include "quarna_data_array/c_abi.h"

#include <cstdint>
#include <memory>
#include <type_traits>

namespace quarna::data::detail {

enum class FunctionType : std::int32_t {
#define QUARNA_OPERATION(number, name, presence, result, arguments) name = (number),
#include "quarna_data_array/operations.def"
};

template <FunctionType id>
struct Operation;

#define QUARNA_OPERATION(number, name, presence, result, arguments) \
    template <>                                                     \
    struct Operation<FunctionType::name> {                          \
        using Function = ::quarna_##name##_function;                \
    };
#include "quarna_data_array/operations.def"

/// Throws FeatureNotSupported, naming the release of the library that first had the operation.
[[noreturn]] void throwMissingOperation(FunctionType id);

/// The operation of a number; throws if the library has none.
template <class Function>
Function resolveFunction(FunctionType id)
{
    void* const function = get_function_ptr(static_cast<int>(id));
    if (function == nullptr) {
        throwMissingOperation(id);
    }
    return reinterpret_cast<Function>(function);
}

/// The operation, looked up on first use.
template <FunctionType id>
typename Operation<id>::Function operation()
{
    static auto* const function = resolveFunction<typename Operation<id>::Function>(id);
    return function;
}

/// The operation, or null for good if the library had none on first use.
template <FunctionType id>
typename Operation<id>::Function optionalOperation()
{
    static auto* const function =
        reinterpret_cast<typename Operation<id>::Function>(get_function_ptr(static_cast<int>(id)));
    return function;
}

/// Calls an operation and throws for an error code, or for a null pointer, which means exhausted memory.
template <class Function, class... Arguments>
auto callAndCheck(Function function, Arguments... arguments)
{
    using Result = std::invoke_result_t<Function, Arguments...>;
    if constexpr (std::is_same_v<Result, int>) {
        if (int const code = function(arguments...); code != 0) {
            throwIfError(code, {});
        }
    } else if constexpr (std::is_pointer_v<Result>) {
        Result const result = function(arguments...);
        if (result == nullptr) {
            throwIfError(static_cast<int>(ExceptionType::OutOfMemory), {});
        }
        return result;
    } else {
        return function(arguments...);
    }
}

template <FunctionType id, class... Arguments>
auto call(Arguments... arguments)
{
    return callAndCheck(operation<id>(), arguments...);
}

/// Frees an object of the library. Without a state: its operation has been looked up when the first of them is made.
template <FunctionType destroyer>
struct Destroy {
    Destroy() { operation<destroyer>(); }

    template <class Object>
    void operator()(Object* object) const
    {
        operation<destroyer>()(object);
    }
};

/// What make() returns, owned. The operation that destroys it is looked up first: what exists can be released.
template <FunctionType destroyer, class Make>
auto makeOwned(Make make)
{
    Destroy<destroyer> const destroy;
    return std::unique_ptr<std::remove_pointer_t<decltype(make())>, Destroy<destroyer>>(make(), destroy);
}

/// What an operation puts into its last argument.
template <FunctionType id, class Made, class... Arguments>
Made* made(Arguments... arguments)
{
    Made* out = nullptr;
    call<id>(arguments..., &out);
    return out;
}

/// The reference that an operation makes.
template <FunctionType id, class... Arguments>
ReferenceHolder makeReference(Arguments... arguments)
{
    return ReferenceHolder(
        makeOwned<FunctionType::destroy_reference>([&] { return made<id, ReferenceImpl>(arguments...); }));
}

/// Throws SystemError for a handle that was moved from: the library would say no more than that it is null.
inline void requireHandle(void const* handle)
{
    if (handle == nullptr) {
        throwIfError(static_cast<int>(ExceptionType::SystemError), {});
    }
}

}  // namespace quarna::data::detail
