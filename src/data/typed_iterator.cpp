// Making iterators with the newest operation that the library has, and taking element addresses from them.
#include "data/typed_iterator.h"

#include "data/operation.h"

namespace quarna::data::detail {
namespace {

template <FunctionType fast, FunctionType plain>
IteratorImpl* iteratorAt(impl::ArrayImpl* array, bool writable)
{
    if (auto* const function = optionalOperation<fast>()) {
        return callAndCheck(function, array, writable);
    }
    return call<plain>(array, writable);
}

void* realElementAddress(IteratorImpl const* iterator)
{
    void* address = nullptr;
    call<FunctionType::get_address>(iterator, &address);
    return address;
}

void* complexElementAddress(IteratorImpl const* iterator)
{
    void* address = nullptr;
    if (auto* const function = optionalOperation<FunctionType::get_complex_address>()) {
        callAndCheck(function, iterator, &address);
        return address;
    }
    ReferenceHolder const holder = makeReference<FunctionType::dereference>(iterator);
    void* imaginary = nullptr;
    call<FunctionType::get_part_addresses>(holder.get(), &address, &imaginary);
    return address;
}

}  // namespace

std::shared_ptr<IteratorImpl> makeIterator(impl::ArrayImpl* array, Position position, bool writable)
{
    return makeOwned<FunctionType::destroy_iterator>([&] {
        return position == Position::First
                   ? iteratorAt<FunctionType::begin_fast, FunctionType::begin>(array, writable)
                   : iteratorAt<FunctionType::end_fast, FunctionType::end>(array, writable);
    });
}

std::shared_ptr<IteratorImpl> copyIterator(std::shared_ptr<IteratorImpl> const& iterator)
{
    if (!iterator) {
        return nullptr;
    }
    return makeOwned<FunctionType::destroy_iterator>(
        [&] { return call<FunctionType::copy_iterator, IteratorImpl const*>(iterator.get()); });
}

void* elementAddress(IteratorImpl const* iterator, ArrayType type)
{
    return isComplex(type) ? complexElementAddress(iterator) : realElementAddress(iterator);
}

void* firstElement(impl::ArrayImpl* array, ArrayType type, bool writable)
{
    return elementAddress(makeIterator(array, Position::First, writable).get(), type);
}

}  // namespace quarna::data::detail
