// The text of an array: what Python prints for its nested list, made without the list.
#include "compare_and_text/text.h"

#include "compare_and_text/ascii_text.h"
#include "compare_and_text/number_text.h"
#include "elements/element_load.h"
#include "indexing/long_reading.h"

#include <algorithm>
#include <cstddef>
#include <new>

namespace quarna {

namespace {

/// What is selected, in rows: of numbers, or empty. The lists of a level without items hold no further levels.
struct Rows {
    explicit Rows(StridedView const& view) : offset(view.offset)
    {
        auto const firstEmpty =
            std::find_if(view.dimensions.begin(), view.dimensions.end(),
                         [](StridedDimension dimension) { return dimension.length == 0; });
        bool const hasNumbers = firstEmpty == view.dimensions.end();
        auto const innermost = hasNumbers ? view.dimensions.end() - 1 : firstEmpty;
        row = *innermost;
        outer.assign(view.dimensions.begin(), innermost);
        std::reverse(outer.begin(), outer.end());
    }

    /// How many characters the text has at least: no row is shorter than "[]", and no number than a digit and a comma.
    std::size_t leastText() const
    {
        std::size_t least = 2 * static_cast<std::size_t>(std::max(row.length, 1L));
        for (StridedDimension const& dimension : outer) {
            if (__builtin_mul_overflow(least, static_cast<std::size_t>(dimension.length), &least)) {
                throw std::bad_alloc();
            }
        }
        return least;
    }

    long offset;
    StridedDimension row;
    StridedDimensions outer;  // the fastest first
};

/// Text that has no room is refused before it is begun. Within reason there is room for the longest numbers from the
/// start: what is not written to costs nothing, and is given back.
template <class T>
std::size_t firstRoom(Rows const& rows)
{
    constexpr std::size_t reasonable = std::size_t{1} << 26U;
    constexpr std::size_t longest = longestNumber<T> + 1;
    std::size_t const least = rows.leastText();
    std::size_t const brackets = 2 * rows.outer.size() + 2;
    return least < reasonable / longest ? least / 2 * longest + brackets : std::max(least, reasonable);
}

template <class T>
class NestedText {
public:
    NestedText(QCppPyArray const& array, AsciiText& text) : m_elements(array), m_text(text) {}

    /// False with an exception set if Python code that ran in between raised one, or reshaped the array.
    bool write(Rows const& rows)
    {
        Odometer position(rows.offset, rows.outer);
        m_text.append(rows.outer.size(), '[');
        bool isLast = false;
        while (!isLast) {
            if (!writeRow(rows.row, position.offset())) {
                return false;
            }
            isLast = !position.advance();
            m_text.append(position.restarted(), ']');
            if (!isLast) {
                m_text.append(1, ',');
                m_text.append(position.restarted(), '[');
            }
        }
        return true;
    }

private:
    bool writeRow(StridedDimension row, long offset)
    {
        m_text.append(1, '[');
        for (long i = 0; i < row.length;) {
            long const count = std::min(row.length - i, numbersAtATime);
            writeNumbers({count, row.stride}, offset + i * row.stride, i > 0);
            i += count;
            if (!m_elements.passed(count)) {
                return false;
            }
        }
        m_text.append(1, ']');
        return m_elements.passed(1);
    }

    void writeNumbers(StridedDimension numbers, long offset, bool afterOthers)
    {
        void const* const block = m_elements.block();
        char* out = m_text.room(static_cast<std::size_t>(numbers.length) * (longestNumber<T> + 1));
        for (long i = 0; i < numbers.length; ++i) {
            if (afterOthers || i > 0) {
                *out++ = ',';
            }
            out = writeNumber(out, loadElementAt<T>(block, offset + i * numbers.stride));
        }
        m_text.writtenTo(out);
    }

    static constexpr long numbersAtATime = 64;

    LongReading m_elements;
    AsciiText& m_text;
};

}  // namespace

template <class T>
PyObject* textOf(QCppPyArray const& array, bool asRepr)
{
    if (!array.requireUsable()) {
        return nullptr;
    }
    Rows const rows(array.selection());
    AsciiText text(firstRoom<T>(rows));
    if (asRepr) {
        text.append("quarna.");
        text.append(className<T>);
        text.append("(");
    }
    if (!NestedText<T>(array, text).write(rows)) {
        return nullptr;
    }
    if (asRepr) {
        text.append(Complex<T> ? ", is_complex=True)" : ")");
    }
    return text.finished();
}

#define QUARNA_ARRAY_TYPE(number, name, element) template PyObject* textOf<element>(QCppPyArray const&, bool);
#include "data/array_types.def"

}  // namespace quarna
