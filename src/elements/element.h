// Element types: ten real numeric types, their std::complex forms, and bool.
#pragma once

#include <complex>
#include <concepts>
#include <type_traits>

namespace quarna {

template <class T>
struct RealPart {
    using Type = T;
    static constexpr bool isComplex = false;
};

template <class T>
struct RealPart<std::complex<T>> {
    using Type = T;
    static constexpr bool isComplex = true;
};

/// The type of an element's real part: T itself where T is real.
template <class T>
using RealPartOf = typename RealPart<T>::Type;

// The six kinds of element, which differ in what Python values they take and give.
template <class T>
concept Double = std::same_as<T, double>;
template <class T>
concept Single = std::same_as<T, float>;
template <class T>
concept Logical = std::same_as<T, bool>;
template <class T>
concept Integer = std::integral<T> && !Logical<T>;
template <class T>
concept Complex = RealPart<T>::isComplex;
template <class T>
concept ComplexFloating = Complex<T> && std::floating_point<RealPartOf<T>>;
template <class T>
concept ComplexInteger = Complex<T> && std::integral<RealPartOf<T>>;

template <class T>
struct ComplexForm {
    using Type = std::complex<T>;
};

// A logical array is never complex.
template <>
struct ComplexForm<bool> {
    using Type = bool;
};

/// Calls `work` with std::type_identity of Element, or of its complex form if `isComplex`.
template <class Element, class Work>
decltype(auto) withElementForm(bool isComplex, Work&& work)
{
    if (isComplex) {
        return work(std::type_identity<typename ComplexForm<Element>::Type>{});
    }
    return work(std::type_identity<Element>{});
}

}  // namespace quarna
