// The library's iterators and element references, and the C++ iterator over contiguous elements.
#pragma once

#include "data/array_type.h"
#include "data/opaque.h"

#include <cstddef>
#include <memory>
#include <utility>

namespace quarna::data {

/// An element of an array by reference, for assignment through detail::setElement.
class ReferenceHolder {
public:
    explicit ReferenceHolder(std::shared_ptr<detail::ReferenceImpl> reference)
        : m_reference(std::move(reference))
    {}
    detail::ReferenceImpl* get() const { return m_reference.get(); }

private:
    std::shared_ptr<detail::ReferenceImpl> m_reference;
};

namespace detail {

enum class Position { First, PastLast };

/// An owned iterator of the library, at the first element or past the last.
std::shared_ptr<IteratorImpl> makeIterator(impl::ArrayImpl* array, Position position, bool writable);

std::shared_ptr<IteratorImpl> copyIterator(std::shared_ptr<IteratorImpl> const& iterator);

/// The address of the element that the iterator stands at, by way of the operations for elements of that type; it
/// stays good after the iterator has gone.
void* elementAddress(IteratorImpl const* iterator, ArrayType type);

/// The address of the first element.
void* firstElement(impl::ArrayImpl* array, ArrayType type, bool writable);

}  // namespace detail

/// Walks the elements of one array. T is const for reading.
template <class T>
class TypedIterator {
public:
    explicit TypedIterator(T* element, std::shared_ptr<detail::IteratorImpl> iterator = nullptr)
        : m_iterator(std::move(iterator)), m_element(element)
    {}
    TypedIterator(TypedIterator const& other)
        : m_iterator(detail::copyIterator(other.m_iterator)), m_element(other.m_element)
    {}
    TypedIterator& operator=(TypedIterator const&) = delete;
    ~TypedIterator() = default;

    T& operator*() const { return *m_element; }
    T* operator+(std::ptrdiff_t offset) const { return m_element + offset; }
    std::ptrdiff_t operator-(TypedIterator const& other) const { return m_element - other.m_element; }
    bool operator==(TypedIterator const& other) const { return m_element == other.m_element; }

private:
    std::shared_ptr<detail::IteratorImpl> m_iterator;
    T* m_element;
};

}  // namespace quarna::data
