// Runs of elements of one type into elements of another: one loop for each pair of types.
#include "numbers/element_runs.h"

#include "data/element_dispatch.h"
#include "elements/element_load.h"
#include "numbers/element_conversion.h"
#include "numbers/plain_number.h"

#include <concepts>
#include <type_traits>

namespace quarna {

namespace {

// The stride is a constant where it can be, and nothing leaves the loop: compilers make vector instructions of it.
template <class T, class Source, class Stride>
bool convertBy(Stride stride, unsigned char const* from, long count, T* destination, bool coerceToLogical)
{
    bool allPlain = true;
    for (long i = 0; i < count; ++i) {
        auto const plain = plainFromElement<T>(loadElementAt<Source>(from, i * stride), coerceToLogical);
        destination[i] = plain.value;
        allPlain &= plain.isPlain;
    }
    return allPlain;
}

template <class T, class Source>
bool convertRun(void const* block, long offset, long stride, long count, T* destination, bool coerceToLogical)
{
    if constexpr (std::same_as<T, Source> && survivesPythonNumber<T>) {
        loadRun(block, offset, count, stride, destination);
        return true;
    } else {
        auto const* const from = addressAt<Source>(block, offset);
        return stride == 1 ? convertBy<T, Source>(std::integral_constant<long, 1>(), from, count, destination,
                                                  coerceToLogical)
                           : convertBy<T, Source>(stride, from, count, destination, coerceToLogical);
    }
}

template <class T>
bool convertOffsets(void const*, long offset, long stride, long count, T* destination, bool)
{
    bool allPlain = true;
    for (long i = 0; i < count; ++i) {
        auto const plain = plainFromInteger<T>(offset + i * stride);
        destination[i] = plain.value;
        allPlain &= plain.isPlain;
    }
    return allPlain;
}

}  // namespace

template <class T>
ConvertRun<T> runConverter(ElementSource const& source)
{
    if (source.block == nullptr) {
        return &convertOffsets<T>;
    }
    return data::visitElementType(source.type, []<class Source>(std::type_identity<Source>) -> ConvertRun<T> {
        return &convertRun<T, Source>;
    });
}

#define QUARNA_ARRAY_TYPE(number, name, element) \
    template ConvertRun<element> runConverter<element>(ElementSource const&);
#include "data/array_types.def"

}  // namespace quarna
