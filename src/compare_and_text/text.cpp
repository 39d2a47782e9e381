// The text of an array: what Python prints for its nested list, made without the list.
#include "compare_and_text/text.h"

#include "elements/element_load.h"
#include "wrapper/qd_array_wrapper.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>
#include <concepts>
#include <cstddef>
#include <new>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

namespace quarna {

namespace {

enum class Sign { OfNegatives, Always };

// The digits of Python's repr: the shortest that read back as the same double, with an exponent for the very small and
// the very large.
void appendDouble(std::string& text, double number, Sign sign)
{
    double const size = std::fabs(number);
    if (sign == Sign::Always && (std::isnan(number) || !std::signbit(number))) {
        text += '+';
    }
    if (std::isnan(number)) {
        text += "nan";
        return;
    }
    bool const isPlain = size == 0.0 || (size >= 1e-4 && size < 1e16);
    std::array<char, 32> digits;
    auto const end = std::to_chars(digits.begin(), digits.end(), number,
                                   isPlain ? std::chars_format::fixed : std::chars_format::scientific)
                         .ptr;
    text.append(digits.begin(), end);
}

// A float shows that it is none of the ints.
void appendFloat(std::string& text, double number)
{
    std::size_t const start = text.size();
    appendDouble(text, number, Sign::OfNegatives);
    if (text.find_first_not_of("-0123456789", start) == std::string::npos) {
        text += ".0";
    }
}

// A real part of +0.0 is left out with its parentheses, one of -0.0 is not.
void appendComplex(std::string& text, double real, double imaginary)
{
    if (real == 0.0 && !std::signbit(real)) {
        appendDouble(text, imaginary, Sign::OfNegatives);
        text += 'j';
        return;
    }
    text += '(';
    appendDouble(text, real, Sign::OfNegatives);
    appendDouble(text, imaginary, Sign::Always);
    text += "j)";
}

template <class T>
void appendNumber(std::string& text, T number)
{
    if constexpr (Complex<T>) {
        appendComplex(text, static_cast<double>(number.real()), static_cast<double>(number.imag()));
    } else if constexpr (Logical<T>) {
        text += number ? "True" : "False";
    } else if constexpr (std::floating_point<T>) {
        appendFloat(text, static_cast<double>(number));
    } else {
        using Printed = std::conditional_t<std::is_signed_v<T>, long, unsigned long>;
        std::array<char, 24> digits{};
        auto const end = std::to_chars(digits.begin(), digits.end(), static_cast<Printed>(number)).ptr;
        text.append(digits.begin(), end);
    }
}

template <class T>
class NestedText {
public:
    explicit NestedText(void const* block) : m_block(block) {}

    std::string write(StridedView const& view)
    {
        // The lists of a level without items hold no further levels.
        auto const firstEmpty =
            std::find_if(view.dimensions.begin(), view.dimensions.end(),
                         [](StridedDimension dimension) { return dimension.length == 0; });
        bool const hasNumbers = firstEmpty == view.dimensions.end();
        auto const innermost = hasNumbers ? view.dimensions.end() - 1 : firstEmpty;
        writeLists(*innermost, StridedDimensions(view.dimensions.begin(), innermost), view.offset);
        return std::move(m_text);
    }

private:
    void writeLists(StridedDimension row, StridedDimensions outer, long offset)
    {
        std::reverse(outer.begin(), outer.end());
        reserve(row, outer);
        Odometer position(offset, outer);
        m_text.append(outer.size(), '[');
        bool isLast = false;
        while (!isLast) {
            writeRow(row, position.offset());
            isLast = !position.advance();
            m_text.append(position.restarted(), ']');
            if (!isLast) {
                m_text += ',';
                m_text.append(position.restarted(), '[');
            }
        }
    }

    // No row is shorter than "[]", and no number than one digit and a comma. Text that has no room is refused
    // before it is begun.
    void reserve(StridedDimension row, StridedDimensions const& outer)
    {
        std::size_t least = 2 * static_cast<std::size_t>(std::max(row.length, 1L));
        for (StridedDimension const& dimension : outer) {
            if (__builtin_mul_overflow(least, static_cast<std::size_t>(dimension.length), &least)) {
                throw std::bad_alloc();
            }
        }
        if (least > m_text.max_size()) {
            throw std::bad_alloc();
        }
        m_text.reserve(least);
    }

    void writeRow(StridedDimension row, long offset)
    {
        m_text += '[';
        for (long i = 0; i < row.length; ++i) {
            if (i > 0) {
                m_text += ',';
            }
            appendNumber(m_text, loadElementAt<T>(m_block, offset));
            offset += row.stride;
        }
        m_text += ']';
    }

    void const* m_block;
    std::string m_text;
};

}  // namespace

template <class T>
std::optional<std::string> textOf(QCppPyArray const& array, bool asRepr)
{
    if (!array.requireUsable()) {
        return std::nullopt;
    }
    std::string list = NestedText<T>(array.getQDAWrapper()->buf()).write(array.selection());
    if (!asRepr) {
        return list;
    }
    return std::string("quarna.") + className<T> + "(" + list +
           (array.isComplex() ? ", is_complex=True)" : ")");
}

#define QUARNA_ARRAY_TYPE(number, name, element) \
    template std::optional<std::string> textOf<element>(QCppPyArray const&, bool);
#include "data/array_types.def"

}  // namespace quarna
