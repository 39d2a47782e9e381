// The library's objects, of which only their addresses are known.
#pragma once

struct quarna_array;
struct quarna_factory;
struct quarna_iterator;
struct quarna_reference;

namespace quarna::data {

namespace impl {
using ArrayImpl = ::quarna_array;
using ArrayFactoryImpl = ::quarna_factory;
}  // namespace impl

namespace detail {
using IteratorImpl = ::quarna_iterator;
using ReferenceImpl = ::quarna_reference;
}  // namespace detail

}  // namespace quarna::data
