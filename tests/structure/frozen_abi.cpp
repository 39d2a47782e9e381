// What was compiled against the library or the capsule goes on working: no number, signature, size or offset
// that others have built in changes unnoticed. A new row of a table gets a line here.
#include "quarna/quarna.hpp"
#include "quarna_data_array/c_abi.h"

#include <complex>
#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace {

// The rows as they are, each a type of its name.
enum Presence { required, optional };
enum Origin { library, client };
template <int number, class Function, Presence presence = required>
struct Operation;
template <int number, std::size_t bytes, int parts, class Element>
struct Type;
template <int number, Origin origin = library>
struct Code;
#define QUARNA_OPERATION(number, name, presence, result, arguments) \
    using name = Operation<number, result arguments, presence>;
#include "quarna_data_array/operations.def"
#define QUARNA_ELEMENT_TYPE(number, name, bytes, parts, element) \
    using name = Type<number, bytes, parts, element>;
#include "quarna_data_array/element_types.def"
#define QUARNA_ERROR_CODE(number, name, origin, message) using name = Code<number, origin>;
#include "quarna_data_array/error_codes.def"

template <class Row, class Frozen>
inline constexpr bool is = std::is_same_v<Row, Frozen>;
template <class Real, class Complex, int number, std::size_t bytes, class T>
inline constexpr bool pair =
    is<Real, Type<number, bytes, 1, T>>&& is<Complex, Type<number + 10, 2 * bytes, 2, std::complex<T>>>;

static_assert(is<decltype(get_function_ptr), void*(int)>);
static_assert(is<quarna_deleter, void (*)(void*)>);

using Walk = quarna_iterator*(quarna_array*, bool);

// clang-format off
static_assert(is<create_factory, Operation<14, int(quarna_factory**)>>);
static_assert(is<destroy_factory, Operation<15, void(quarna_factory*)>>);
static_assert(is<create_empty_array, Operation<49, quarna_array*()>>);
static_assert(is<destroy_array, Operation<50, void(quarna_array*)>>);
static_assert(is<create_array, Operation<1, int(quarna_factory*, int32_t, const size_t*, size_t, quarna_array**)>>);
static_assert(is<create_scalar, Operation<3, int(quarna_factory*, int32_t, const void*, quarna_array**)>>);
static_assert(is<create_buffer, Operation<13, int(quarna_factory*, void**, quarna_deleter*, int32_t, size_t)>>);
static_assert(is<adopt_buffer, Operation<11, int(quarna_factory*, int32_t, const size_t*, size_t, void*, quarna_deleter, quarna_array**)>>);
static_assert(is<adopt_buffer_in_order, Operation<110, int(quarna_factory*, int32_t, const size_t*, size_t, void*, quarna_deleter, quarna_array**, int32_t), optional>>);
static_assert(is<get_dimensions, Operation<51, int(const quarna_array*, size_t*, const size_t**)>>);
static_assert(is<get_element_count, Operation<52, size_t(const quarna_array*)>>);
static_assert(is<get_type, Operation<53, int(const quarna_array*, int32_t*)>>);
static_assert(is<types_are_compatible, Operation<59, int(int32_t, int32_t, bool*)>>);
static_assert(is<unshare, Operation<55, bool(const quarna_array*, bool, quarna_array**)>>);
static_assert(is<release_buffer, Operation<60, int(quarna_array*, bool, void**, quarna_deleter*)>>);
static_assert(is<begin, Operation<57, Walk>> && is<begin_fast, Operation<114, Walk, optional>>);
static_assert(is<end, Operation<58, Walk>> && is<end_fast, Operation<115, Walk, optional>>);
static_assert(is<copy_iterator, Operation<63, quarna_iterator*(const quarna_iterator*)>>);
static_assert(is<destroy_iterator, Operation<64, void(quarna_iterator*)>>);
static_assert(is<get_address, Operation<71, int(const quarna_iterator*, void**)>>);
static_assert(is<get_complex_address, Operation<113, int(const quarna_iterator*, void**), optional>>);
static_assert(is<dereference, Operation<72, int(const quarna_iterator*, quarna_reference**)>>);
static_assert(is<get_reference, Operation<56, int(quarna_array*, size_t, quarna_reference**)>>);
static_assert(is<get_part_addresses, Operation<94, int(const quarna_reference*, void**, void**)>>);
static_assert(is<set_complex, Operation<96, int(quarna_reference*, int32_t, const void*, const void*)>>);
static_assert(is<destroy_reference, Operation<23, void(quarna_reference*)>>);

static_assert(is<LOGICAL, Type<0, 1, 1, bool>> && is<CHAR, Type<1, 2, 1, char16_t>>);
static_assert(pair<DOUBLE, COMPLEX_DOUBLE, 3, 8, double> && pair<SINGLE, COMPLEX_SINGLE, 4, 4, float>);
static_assert(pair<INT8, COMPLEX_INT8, 5, 1, std::int8_t> && pair<UINT8, COMPLEX_UINT8, 6, 1, std::uint8_t>);
static_assert(pair<INT16, COMPLEX_INT16, 7, 2, std::int16_t> && pair<UINT16, COMPLEX_UINT16, 8, 2, std::uint16_t>);
static_assert(pair<INT32, COMPLEX_INT32, 9, 4, std::int32_t> && pair<UINT32, COMPLEX_UINT32, 10, 4, std::uint32_t>);
static_assert(pair<INT64, COMPLEX_INT64, 11, 8, std::int64_t> && pair<UINT64, COMPLEX_UINT64, 12, 8, std::uint64_t>);

static_assert(is<InvalidArrayIndex, Code<1>> && is<StringIndexMustBeLast, Code<2>> && is<StringIndexNotValid, Code<3>>);
static_assert(is<NotEnoughIndices, Code<5>> && is<TooManyIndices, Code<6>> && is<OnlyOneStringIndex, Code<7>>);
static_assert(is<DataTypeMismatch, Code<8>> && is<ArrayTypeMismatch, Code<9>> && is<FieldDoesNotExist, Code<10>>);
static_assert(is<MissingClassName, Code<13>> && is<WrongNumberOfEnums, Code<14>> && is<NotAString, Code<16>>);
static_assert(is<DuplicateFieldName, Code<18>> && is<OutOfMemory, Code<19>> && is<SystemError, Code<20>>);
static_assert(is<EmptyArrayIndexed, Code<21>> && is<MemoryLayoutMismatch, Code<23>> && is<InputLayoutMismatch, Code<24>>);
static_assert(is<OutputLayoutMismatch, Code<25>> && is<TooManyElements, Code<26>> && is<HeterogeneousObjects, Code<27>>);
static_assert(is<LibraryText, Code<28>> && is<LibraryDetail, Code<29>>);
static_assert(is<FeatureNotSupported, Code<22, client>>);
// clang-format on

#define QUARNA_ELEMENT_TYPE(number, name, bytes, parts, element) static_assert(sizeof(element) == (bytes));
#include "quarna_data_array/element_types.def"

static_assert(is<decltype(quarna_api::from_data_array), PyObject* (*)(void*)>);
static_assert(is<decltype(quarna_api::to_data_array), void* (*)(PyObject*)>);

}  // namespace
