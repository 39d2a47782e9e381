// Equality: of class, of nesting, and of all numbers in Python's own terms.
#include "compare_and_text/equality.h"

#include "elements/element_load.h"
#include "indexing/long_reading.h"

#include <algorithm>
#include <cmath>
#include <complex>
#include <concepts>
#include <cstddef>
#include <cstdint>
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

constexpr long atATime = 64;

/// Some elements, compared without a way out between them.
template <class Left, class Right>
bool fewAreEqual(void const* left, long leftStride, void const* right, long rightStride, long length)
{
    bool equal = true;
    for (long i = 0; i < length; ++i) {
        equal &= numbersAreEqual(loadElementAt<Left>(left, i * leftStride),
                                 loadElementAt<Right>(right, i * rightStride));
    }
    return equal;
}

/// The same for floating-point neighbours. Compilers make no vector instructions of comparisons of doubles by
/// themselves, unless they may ask for a newer processor.
template <std::floating_point T>
bool neighboursAreEqual(void const* left, void const* right, long length)
{
    using Lanes __attribute__((vector_size(16))) = T;
    constexpr long lanes = sizeof(Lanes) / sizeof(T);
    constexpr long vectors = 4;  // so many comparisons wait for none of each other
    constexpr long step = vectors * lanes;
    decltype(Lanes{} != Lanes{}) different[vectors] = {};
    long i = 0;
    for (; i + step <= length; i += step) {
        for (long k = 0; k < vectors; ++k) {
            different[k] |= loadElementAt<Lanes>(addressAt<T>(left, i), k) !=
                            loadElementAt<Lanes>(addressAt<T>(right, i), k);
        }
    }
    bool equal = fewAreEqual<T, T>(addressAt<T>(left, i), 1, addressAt<T>(right, i), 1, length - i);
    auto const found = (different[0] | different[1]) | (different[2] | different[3]);
    for (long lane = 0; lane < lanes; ++lane) {
        equal &= found[lane] == 0;
    }
    return equal;
}

// Equal bytes are equal numbers here, which other bytes may be too.
template <class T>
bool neighboursAreEqual(void const* left, void const* right, long length)
{
    return std::memcmp(left, right, static_cast<std::size_t>(length) * sizeof(T)) == 0 ||
           (!bytesDecide<T> && fewAreEqual<T, T>(left, 1, right, 1, length));
}

template <class T>
bool blocksAreEqual(void const* left, void const* right, long length)
{
    if constexpr (ComplexFloating<T>) {
        return blocksAreEqual<RealPartOf<T>>(left, right, 2 * length);
    } else if constexpr (bytesDecide<T>) {
        return neighboursAreEqual<T>(left, right, length);
    } else {
        bool equal = true;
        for (long start = 0; equal && start < length; start += atATime) {
            equal = neighboursAreEqual<T>(addressAt<T>(left, start), addressAt<T>(right, start),
                                          std::min(atATime, length - start));
        }
        return equal;
    }
}

/// Two runs of elements with their strides.
template <class Left, class Right>
bool runsAreEqual(void const* left, long leftStride, void const* right, long rightStride, long length)
{
    if constexpr (std::same_as<Left, Right>) {
        if (leftStride == 1 && rightStride == 1) {
            return blocksAreEqual<Left>(left, right, length);
        }
    }
    bool equal = true;
    for (long start = 0; equal && start < length; start += atATime) {
        equal = fewAreEqual<Left, Right>(addressAt<Left>(left, start * leftStride), leftStride,
                                         addressAt<Right>(right, start * rightStride), rightStride,
                                         std::min(atATime, length - start));
    }
    return equal;
}

/// Empty with an exception set if Python code that ran in between raised one, or reshaped an array.
template <class Left, class Right>
std::optional<bool> elementsAreEqual(QCppPyArray const& left, StridedView const& leftView,
                                     QCppPyArray const& right, StridedView const& rightView)
{
    LongReading leftElements(left);
    LongReading const rightElements(right);
    RunCursor leftRun(leftView, WalkOrder::Stored);
    RunCursor rightRun(rightView, WalkOrder::Stored);
    auto const [length, leftStride] = leftRun.run();
    long const rightStride = rightRun.run().stride;
    do {
        for (long start = 0; start < length;) {
            long const portion = leftElements.portionOf(length - start);
            if (!runsAreEqual<Left, Right>(
                    addressAt<Left>(leftElements.block(), leftRun.offset() + start * leftStride), leftStride,
                    addressAt<Right>(rightElements.block(), rightRun.offset() + start * rightStride),
                    rightStride, portion)) {
                return false;
            }
            if (!leftElements.passed(portion) || !rightElements.isSteady()) {
                return std::nullopt;
            }
            start += portion;
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
    StridedView leftView = left.selection();
    StridedView rightView = right.selection();
    Nesting const nesting = compareNesting(leftView, rightView);
    if (nesting != Nesting::Alike) {
        return nesting == Nesting::AlikeAndEmpty;
    }
    joinDimensions(leftView, rightView);
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
