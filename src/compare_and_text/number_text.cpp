// Doubles as Python prints them: the shortest digits that read back as the same double.
#include "compare_and_text/number_text.h"

#include <algorithm>
#include <cmath>
#include <cstdint>

namespace quarna {

namespace {

char* writeText(char* out, std::string_view text)
{
    return out + text.copy(out, text.size());
}

char* writeWhole(char* end, WholeFloats wholes)
{
    return wholes == WholeFloats::WithPoint ? writeText(end, ".0") : end;
}

/// A number below 10^9 that has at most four decimals; null for any other. No two decimals of up to 15 digits read as
/// one double, so these digits are the shortest once the zeros at their end are gone.
char* writeShortDecimal(char* out, double size, WholeFloats wholes)
{
    constexpr double scale = 1e4;
    constexpr double bound = 1e9;
    if (!(size < bound)) {
        return nullptr;
    }
    auto const scaled = static_cast<std::int64_t>(size * scale + 0.5);
    if (static_cast<double>(scaled) / scale != size) {
        return nullptr;
    }
    auto const whole = static_cast<unsigned>(scaled / 10000);
    auto decimals = static_cast<unsigned>(scaled % 10000);
    out = std::to_chars(out, out + longestDouble, whole).ptr;
    if (decimals == 0) {
        return writeWhole(out, wholes);
    }
    *out++ = '.';
    for (unsigned place = 1000; decimals != 0; place /= 10) {
        *out++ = static_cast<char>('0' + decimals / place);
        decimals %= place;
    }
    return out;
}

/// From "d.ddde+XX", whose exponent is not negative, to digits without an exponent.
char* movePointRight(char* begin, char* endOfDigits, int exponent, WholeFloats wholes)
{
    int const decimals = std::max(static_cast<int>(endOfDigits - begin) - 2, 0);
    int const moved = std::min(decimals, exponent);
    char* const point = begin + 1 + moved;
    std::memmove(begin + 1, begin + 2, static_cast<std::size_t>(moved));
    if (decimals > exponent) {
        *point = '.';
        return endOfDigits;
    }
    return writeWhole(std::fill_n(point, exponent - decimals, '0'), wholes);
}

/// The same for an exponent below 0, given without its sign.
char* movePointLeft(char* begin, char* endOfDigits, int exponent)
{
    char const first = *begin;
    auto const decimals = static_cast<std::size_t>(std::max(static_cast<int>(endOfDigits - begin) - 2, 0));
    char* const digits = begin + 1 + exponent;
    std::memmove(digits + 1, begin + 2, decimals);
    std::fill_n(writeText(begin, "0."), exponent - 1, '0');
    *digits = first;
    return digits + 1 + decimals;
}

char* writeShortest(char* out, double size, WholeFloats wholes)
{
    char* const end = std::to_chars(out, out + longestDouble, size, std::chars_format::scientific).ptr;
    bool const needsExponent = size < 1e-4 || size >= 1e16;
    if (needsExponent) {
        return end;
    }
    char* const endOfDigits = end - std::string_view("e+00").size();
    int const exponent = 10 * (end[-2] - '0') + (end[-1] - '0');
    return endOfDigits[1] == '-' ? movePointLeft(out, endOfDigits, exponent)
                                 : movePointRight(out, endOfDigits, exponent, wholes);
}

}  // namespace

char* writeDouble(char* out, double number, WholeFloats wholes)
{
    if (std::isnan(number)) {
        return writeText(out, "nan");
    }
    if (std::signbit(number)) {
        *out++ = '-';
    }
    double const size = std::fabs(number);
    if (char* const end = writeShortDecimal(out, size, wholes)) {
        return end;
    }
    return std::isinf(size) ? writeText(out, "inf") : writeShortest(out, size, wholes);
}

// A real part of +0.0 is left out with its parentheses, one of -0.0 is not.
char* writeComplex(char* out, double real, double imaginary)
{
    if (real == 0.0 && !std::signbit(real)) {
        return writeText(writeDouble(out, imaginary, WholeFloats::Bare), "j");
    }
    *out++ = '(';
    out = writeDouble(out, real, WholeFloats::Bare);
    if (std::isnan(imaginary) || !std::signbit(imaginary)) {
        *out++ = '+';
    }
    return writeText(writeDouble(out, imaginary, WholeFloats::Bare), "j)");
}

}  // namespace quarna
