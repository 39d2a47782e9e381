// Equality: of class, of nesting, and of all numbers in Python's own terms.
#include "compare_and_text/equality.h"

#include "elements/element_load.h"
#include "wrapper/qd_array_wrapper.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <concepts>
#include <cstddef>
#include <cstring>
#include <limits>
#include <optional>
#include <type_traits>

namespace quarna {

namespace {

enum class Nesting { Different, AlikeAndEmpty, Alike };

// Nested sequences are compared level by level, so what lies below an empty level does not count.
Nesting compareNesting(StridedView const& left, StridedView const& right)
{
    std::size_t const levels = std::min(left.dimensions.size(), right.dimensions.size());
    for (std::size_t level = 0; level < levels; ++level) {
        if (left.dimensions[level].length != right.dimensions[level].length) {
            return Nesting::Different;
        }
        if (left.dimensions[level].length == 0) {
            return Nesting::AlikeAndEmpty;
        }
    }
    return left.dimensions.size() == right.dimensions.size() ? Nesting::Alike : Nesting::Different;
}

template <std::floating_point T>
bool equalsDouble(T number, double other)
{
    return static_cast<double>(number) == other;
}

// Exact, as Python compares an int with a float: the integer is not rounded to a double.
template <std::integral T>
bool equalsDouble(T number, double other)
{
    double const bound = std::ldexp(1.0, std::numeric_limits<T>::digits);
    double const lowest = std::numeric_limits<T>::is_signed ? -bound : 0.0;
    return other >= lowest && other < bound && std::trunc(other) == other && static_cast<T>(other) == number;
}

template <class T>
std::complex<double> asPythonComplex(T number)
{
    return {static_cast<double>(number.real()), static_cast<double>(number.imag())};
}

template <class Left, class Right>
bool numbersAreEqual(Left left, Right right)
{
    if constexpr (Complex<Left> && Complex<Right>) {
        return asPythonComplex(left) == asPythonComplex(right);
    } else if constexpr (Complex<Left>) {
        return numbersAreEqual(right, left);
    } else if constexpr (Complex<Right>) {
        std::complex<double> const number = asPythonComplex(right);
        return number.imag() == 0.0 && equalsDouble(left, number.real());
    } else {
        return left == right;
    }
}

// Whether Python calls two elements equal exactly if they have the same bytes.
template <class T>
inline constexpr bool bytesDecide = Integer<T> ||
                                    (ComplexInteger<T> &&
                                     sizeof(RealPartOf<T>) < 8);  // larger parts are compared as doubles

/// Two runs of elements with their strides. Some elements are compared at a time, without a way out between them, which
/// compilers turn into vector instructions.
template <class Left, class Right>
bool runsAreEqual(void const* left, long leftStride, void const* right, long rightStride, long length)
{
    constexpr long atATime = 64;
    if constexpr (std::same_as<Left, Right> && bytesDecide<Left>) {
        if (leftStride == 1 && rightStride == 1) {
            return std::memcmp(left, right, static_cast<std::size_t>(length) * sizeof(Left)) == 0;
        }
    }
    for (long start = 0; start < length; start += atATime) {
        bool equal = true;
        for (long i = start; i < std::min(start + atATime, length); ++i) {
            equal &= numbersAreEqual(loadElementAt<Left>(left, i * leftStride),
                                     loadElementAt<Right>(right, i * rightStride));
        }
        if (!equal) {
            return false;
        }
    }
    return true;
}

template <class Left, class Right>
bool elementsAreEqual(QCppPyArray const& left, StridedView const& leftView, QCppPyArray const& right,
                      StridedView const& rightView)
{
    void const* const leftBlock = left.getQDAWrapper()->buf();
    void const* const rightBlock = right.getQDAWrapper()->buf();
    RunCursor leftRun(leftView, WalkOrder::Stored);
    RunCursor rightRun(rightView, WalkOrder::Stored);
    do {
        if (!runsAreEqual<Left, Right>(addressAt<Left>(leftBlock, leftRun.offset()), leftRun.run().stride,
                                       addressAt<Right>(rightBlock, rightRun.offset()), rightRun.run().stride,
                                       leftRun.run().length)) {
            return false;
        }
        rightRun.advance();
    } while (leftRun.advance());
    return true;
}

}  // namespace

template <class Real>
std::optional<bool> areEqual(QCppPyArray const& left, QCppPyArray const& right)
{
    if (left.getSupportedArrayEnum() != right.getSupportedArrayEnum()) {
        return false;
    }
    if (!left.requireUsable() || !right.requireUsable()) {
        return std::nullopt;
    }
    StridedView const leftView = left.selection();
    StridedView const rightView = right.selection();
    Nesting const nesting = compareNesting(leftView, rightView);
    if (nesting != Nesting::Alike) {
        return nesting == Nesting::AlikeAndEmpty;
    }
    return withElementForm<Real>(left.isComplex(), [&]<class Left>(std::type_identity<Left>) {
        return withElementForm<Real>(right.isComplex(), [&]<class Right>(std::type_identity<Right>) {
            return elementsAreEqual<Left, Right>(left, leftView, right, rightView);
        });
    });
}

#define QUARNA_CLASS(suffix, attribute, element, code) \
    template std::optional<bool> areEqual<element>(QCppPyArray const&, QCppPyArray const&);
#include "vocabulary/class_table.def"

}  // namespace quarna
