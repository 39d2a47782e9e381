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
template <int number, Presence presence, class Function>
struct Operation;
template <int number, std::size_t bytes, int parts, class Element>
struct Type;
template <int number, Origin origin>
struct Code;
#define QUARNA_OPERATION(number, name, presence, result, arguments) \
    using name = Operation<number, presence, result arguments>;
#include "quarna_data_array/operations.def"
#define QUARNA_ELEMENT_TYPE(number, name, bytes, parts, element) \
    using name = Type<number, bytes, parts, element>;
#include "quarna_data_array/element_types.def"
#define QUARNA_ERROR_CODE(number, name, origin, message) using name = Code<number, origin>;
#include "quarna_data_array/error_codes.def"

template <class Row, class Frozen>
inline constexpr bool is = std::is_same_v<Row, Frozen>;
template <int number>
using Library = Code<number, library>;
template <int number, class Function>
using Required = Operation<number, required, Function>;
template <int number, class Function>
using Optional = Operation<number, optional, Function>;
template <class Real, class Complex, int number, std::size_t bytes, class T>
inline constexpr bool pair =
    is<Real, Type<number, bytes, 1, T>>&& is<Complex, Type<number + 10, 2 * bytes, 2, std::complex<T>>>;

static_assert(is<decltype(get_function_ptr), void*(int)>);
static_assert(is<quarna_deleter, void (*)(void*)>);

using Walk = quarna_iterator*(quarna_array*, bool);

// clang-format off
static_assert(is<create_factory, Required<14, int(quarna_factory**)>>);
static_assert(is<destroy_factory, Required<15, void(quarna_factory*)>>);
static_assert(is<create_empty_array, Required<49, quarna_array*()>>);
static_assert(is<destroy_array, Required<50, void(quarna_array*)>>);
static_assert(is<create_array, Required<1, int(quarna_factory*, int32_t, const size_t*, size_t, quarna_array**)>>);
static_assert(is<create_scalar, Required<3, int(quarna_factory*, int32_t, const void*, quarna_array**)>>);
static_assert(is<create_buffer, Required<13, int(quarna_factory*, void**, quarna_deleter*, int32_t, size_t)>>);
static_assert(is<adopt_buffer, Required<11, int(quarna_factory*, int32_t, const size_t*, size_t, void*, quarna_deleter, quarna_array**)>>);
static_assert(is<adopt_buffer_in_order, Optional<110, int(quarna_factory*, int32_t, const size_t*, size_t, void*, quarna_deleter, quarna_array**, int32_t)>>);
static_assert(is<get_dimensions, Required<51, int(const quarna_array*, size_t*, const size_t**)>>);
static_assert(is<get_element_count, Required<52, size_t(const quarna_array*)>>);
static_assert(is<get_type, Required<53, int(const quarna_array*, int32_t*)>>);
static_assert(is<types_are_compatible, Required<59, int(int32_t, int32_t, bool*)>>);
static_assert(is<unshare, Required<55, bool(const quarna_array*, bool, quarna_array**)>>);
static_assert(is<release_buffer, Required<60, int(quarna_array*, bool, void**, quarna_deleter*)>>);
static_assert(is<begin, Required<57, Walk>> && is<begin_fast, Optional<114, Walk>>);
static_assert(is<end, Required<58, Walk>> && is<end_fast, Optional<115, Walk>>);
static_assert(is<copy_iterator, Required<63, quarna_iterator*(const quarna_iterator*)>>);
static_assert(is<destroy_iterator, Required<64, void(quarna_iterator*)>>);
static_assert(is<get_address, Required<71, int(const quarna_iterator*, void**)>>);
static_assert(is<get_complex_address, Optional<113, int(const quarna_iterator*, void**)>>);
static_assert(is<dereference, Required<72, int(const quarna_iterator*, quarna_reference**)>>);
static_assert(is<get_reference, Required<56, int(quarna_array*, size_t, quarna_reference**)>>);
static_assert(is<get_part_addresses, Required<94, int(const quarna_reference*, void**, void**)>>);
static_assert(is<set_complex, Required<96, int(quarna_reference*, int32_t, const void*, const void*)>>);
static_assert(is<destroy_reference, Required<23, void(quarna_reference*)>>);

static_assert(is<LOGICAL, Type<0, 1, 1, bool>> && is<CHAR, Type<1, 2, 1, char16_t>>);
static_assert(pair<DOUBLE, COMPLEX_DOUBLE, 3, 8, double> && pair<SINGLE, COMPLEX_SINGLE, 4, 4, float>);
static_assert(pair<INT8, COMPLEX_INT8, 5, 1, std::int8_t> && pair<UINT8, COMPLEX_UINT8, 6, 1, std::uint8_t>);
static_assert(pair<INT16, COMPLEX_INT16, 7, 2, std::int16_t> && pair<UINT16, COMPLEX_UINT16, 8, 2, std::uint16_t>);
static_assert(pair<INT32, COMPLEX_INT32, 9, 4, std::int32_t> && pair<UINT32, COMPLEX_UINT32, 10, 4, std::uint32_t>);
static_assert(pair<INT64, COMPLEX_INT64, 11, 8, std::int64_t> && pair<UINT64, COMPLEX_UINT64, 12, 8, std::uint64_t>);

static_assert(is<InvalidArrayIndex, Library<1>> && is<StringIndexMustBeLast, Library<2>> && is<StringIndexNotValid, Library<3>>);
static_assert(is<NotEnoughIndices, Library<5>> && is<TooManyIndices, Library<6>> && is<OnlyOneStringIndex, Library<7>>);
static_assert(is<DataTypeMismatch, Library<8>> && is<ArrayTypeMismatch, Library<9>> && is<FieldDoesNotExist, Library<10>>);
static_assert(is<MissingClassName, Library<13>> && is<WrongNumberOfEnums, Library<14>> && is<NotAString, Library<16>>);
static_assert(is<DuplicateFieldName, Library<18>> && is<OutOfMemory, Library<19>> && is<SystemError, Library<20>>);
static_assert(is<EmptyArrayIndexed, Library<21>> && is<MemoryLayoutMismatch, Library<23>> && is<InputLayoutMismatch, Library<24>>);
static_assert(is<OutputLayoutMismatch, Library<25>> && is<TooManyElements, Library<26>> && is<HeterogeneousObjects, Library<27>>);
static_assert(is<LibraryText, Library<28>> && is<LibraryDetail, Library<29>>);
static_assert(is<FeatureNotSupported, Code<22, client>>);
// clang-format on

#define QUARNA_ELEMENT_TYPE(number, name, bytes, parts, element) static_assert(sizeof(element) == (bytes));
#include "quarna_data_array/element_types.def"

static_assert(is<decltype(quarna_api::from_data_array), PyObject* (*)(void*)>);
static_assert(is<decltype(quarna_api::to_data_array), void* (*)(PyObject*)>);

}  // namespace
