// One number as Python prints it, written to memory that has room for it.
#pragma once

#include "elements/element.h"

#include <charconv>
#include <cstddef>
#include <cstring>
#include <limits>
#include <string_view>
#include <type_traits>

namespace quarna {

/// What tells a float from an int where both would read alike: floats end in ".0", the parts of a complex do not.
enum class WholeFloats { WithPoint, Bare };

/// A sign, 17 digits, a point and an exponent of three digits with its sign.
inline constexpr std::size_t longestDouble = 24;

/// The repr of a double; returns its end. There is room for longestDouble characters.
char* writeDouble(char* out, double number, WholeFloats wholes);

/// The repr of a complex number; there is room for two doubles and "(+j)".
char* writeComplex(char* out, double real, double imaginary);

/// No number of T has a longer text.
template <class T>
inline constexpr std::size_t longestNumber = Complex<T>                    ? 2 * longestDouble + 4
                                             : std::is_floating_point_v<T> ? longestDouble
                                             : Logical<T>                  ? std::string_view("False").size()
                                                          : std::numeric_limits<T>::digits10 + 2;

/// A number of any element type; returns its end. There is room for the longest.
template <class T>
char* writeNumber(char* out, T number)
{
    if constexpr (Complex<T>) {
        return writeComplex(out, static_cast<double>(number.real()), static_cast<double>(number.imag()));
    } else if constexpr (Logical<T>) {
        std::string_view const text = number ? "True" : "False";
        return out + text.copy(out, text.size());
    } else if constexpr (std::is_floating_point_v<T>) {
        return writeDouble(out, static_cast<double>(number), WholeFloats::WithPoint);
    } else {
        using Printed = std::conditional_t<sizeof(T) < sizeof(int), int, T>;
        return std::to_chars(out, out + longestNumber<T>, static_cast<Printed>(number)).ptr;
    }
}

}  // namespace quarna
