// A handle on an array of known element type: elements by pointer, copy-on-write, and the storage itself.
#pragma once

#include "data/array.h"
#include "data/typed_iterator.h"
#include "elements/element.h"

#include <cstddef>
#include <memory>
#include <utility>

namespace quarna::data {

/// A block of elements and the function that frees it, both from the library.
template <class T>
using ElementBuffer = std::unique_ptr<T[], void (*)(void*)>;

template <class T>
class TypedArray : public Array {
public:
    /// Throw ArrayTypeMismatch if the array holds other elements; an array to be moved in is then left as it was.
    explicit TypedArray(Array const& array);
    explicit TypedArray(Array&& array);
    /// Of an array that was made with elements of T.
    static TypedArray madeAs(Array&& array) { return TypedArray(std::move(array), Made()); }

    /// The elements in storage order. The first form detaches: other holders keep the old array and this handle
    /// goes on with a private copy. The forms without a throw end the process where the others throw.
    T* writableElements();
    T const* elements() const;
    TypedIterator<T> begin() noexcept { return TypedIterator<T>(writableElements()); }
    TypedIterator<T const> begin() const noexcept { return TypedIterator<T const>(elements()); }
    TypedIterator<T const> end() const noexcept;

    /// All elements in storage order. A sole holder hands its storage over and must only be destroyed then; with
    /// other holders the block is a copy and the array stays as it was.
    ElementBuffer<T> release();

    /// One element by reference, detached as by writableElements(). Throws InvalidArrayIndex for an index out of range.
    ReferenceHolder operator[](std::size_t index) requires Complex<T>;

private:
    struct Made {};
    TypedArray(Array&& array, Made) : Array(std::move(array)) {}
};

namespace detail {

/// Stores a complex element from the addresses of its parts; `type` is the number of its complex type.
void setElement(ReferenceImpl* reference, void const* real, void const* imaginary, int type);

template <Complex T>
void setElement(ReferenceImpl* reference, T value, int type)
{
    RealPartOf<T> const parts[] = {value.real(), value.imag()};
    setElement(reference, &parts[0], &parts[1], type);
}

}  // namespace detail
}  // namespace quarna::data
