// A value-like handle on one array of the library; copies share the array, the last one frees it.
#pragma once

#include "data/array_type.h"
#include "data/opaque.h"

#include <cstddef>
#include <memory>
#include <utility>
#include <vector>

namespace quarna::data {

class Array {
public:
    /// A new empty array. Ends the process if the library cannot make one.
    Array() noexcept;
    /// Takes ownership of `impl`, in failure too, unless the library cannot destroy arrays.
    explicit Array(impl::ArrayImpl* impl);
    Array(Array const&) = default;
    Array(Array&&) noexcept = default;
    Array& operator=(Array const&) = default;
    Array& operator=(Array&&) noexcept = default;
    virtual ~Array() = default;

    ArrayType getType() const;

    /// The length of each dimension, as created. End the process if the library lacks the operation or there is
    /// no memory for the answer; dimensions() and elementCount() throw instead.
    std::vector<std::size_t> getDimensions() const noexcept { return dimensions(); }
    std::size_t getNumberOfElements() const noexcept { return elementCount(); }
    std::vector<std::size_t> dimensions() const;
    std::size_t elementCount() const;

    /// The library's object, which this handle goes on owning; null for a handle moved from.
    impl::ArrayImpl* handle() const { return m_impl.get(); }

    /// A further holder of `impl`, which the library destroys after the last.
    explicit Array(std::shared_ptr<impl::ArrayImpl> impl) : m_impl(std::move(impl)) {}

    bool isSoleHolder() const { return m_impl.use_count() == 1; }

    /// Leaves this handle with an array that no other handle holds: its own, or a private copy. Throws, and the
    /// handle is then as it was.
    void makeUnshared();

    /// Where the elements lie, in storage order, for as long as the array lives and nobody takes its storage. `type` is
    /// the array's own.
    void* address(ArrayType type) const;

private:
    std::shared_ptr<impl::ArrayImpl> m_impl;
};

}  // namespace quarna::data
