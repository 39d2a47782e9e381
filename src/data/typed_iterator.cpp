// Making iterators with the newest operation that the library has, and taking element addresses from them.
#include "data/typed_iterator.h"

#include "data/operation.h"

quarna::data::ReferenceHolder::ReferenceHolder(detail::ReferenceImpl* reference)
    : m_reference(reference, detail::operation<detail::FunctionType::destroy_reference>())
{}

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

std::shared_ptr<IteratorImpl> owned(IteratorImpl* iterator)
{
    return {iterator, operation<FunctionType::destroy_iterator>()};
}

}  // namespace

std::shared_ptr<IteratorImpl> makeIterator(impl::ArrayImpl* array, Position position, bool writable)
{
    return owned(position == Position::First
                     ? iteratorAt<FunctionType::begin_fast, FunctionType::begin>(array, writable)
                     : iteratorAt<FunctionType::end_fast, FunctionType::end>(array, writable));
}

std::shared_ptr<IteratorImpl> copyIterator(std::shared_ptr<IteratorImpl> const& iterator)
{
    return iterator ? owned(call<FunctionType::copy_iterator>(iterator.get())) : nullptr;
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
    ReferenceImpl* reference = nullptr;
    call<FunctionType::dereference>(iterator, &reference);
    ReferenceHolder const holder(reference);
    void* imaginary = nullptr;
    call<FunctionType::get_part_addresses>(holder.get(), &address, &imaginary);
    return address;
}

}  // namespace quarna::data::detail
