// What was compiled against the library or the capsule goes on working: no number, signature, size or offset
// that others have built in changes unnoticed. A new row of a table gets a line here.
#include "quarna/quarna.hpp"
#include "quarna_data_array/c_abi.h"

#include <climits>
#include <complex>
#include <cstddef>
#include <cstdint>
#include <type_traits>

namespace {

enum class Presence { required, optional };
enum class Origin { library, client };

template <int number, Presence presence, class Function>
struct Operation;
template <int number, std::size_t bytes, int parts, class Element>
struct Type;
template <int number, Origin origin>
struct Code;

// The rows as they are.
namespace operations {
#define QUARNA_OPERATION(number, name, presence, result, arguments) \
    using name = Operation<number, Presence::presence, result arguments>;
#include "quarna_data_array/operations.def"
}  // namespace operations
namespace types {
#define QUARNA_ELEMENT_TYPE(number, name, bytes, parts, element) \
    using name = Type<number, bytes, parts, element>;
#include "quarna_data_array/element_types.def"
}  // namespace types
namespace codes {
#define QUARNA_ERROR_CODE(number, name, origin, message) using name = Code<number, Origin::origin>;
#include "quarna_data_array/error_codes.def"
}  // namespace codes

template <class Row, class Frozen>
inline constexpr bool is = std::is_same_v<Row, Frozen>;
template <int number>
using Library = Code<number, Origin::library>;
template <int number, class Function>
using Required = Operation<number, Presence::required, Function>;
template <int number, class Function>
using Optional = Operation<number, Presence::optional, Function>;

static_assert(is<decltype(get_function_ptr), void*(int)>);
static_assert(is<quarna_deleter, void (*)(void*)>);

using Walk = quarna_iterator*(quarna_array*, bool);

// clang-format off
static_assert(is<operations::create_factory, Required<14, int(quarna_factory**)>>);
static_assert(is<operations::destroy_factory, Required<15, void(quarna_factory*)>>);
static_assert(is<operations::create_empty_array, Required<49, quarna_array*()>>);
static_assert(is<operations::destroy_array, Required<50, void(quarna_array*)>>);
static_assert(is<operations::create_array, Required<1, int(quarna_factory*, int32_t, const size_t*, size_t, quarna_array**)>>);
static_assert(is<operations::create_scalar, Required<3, int(quarna_factory*, int32_t, const void*, quarna_array**)>>);
static_assert(is<operations::create_buffer, Required<13, int(quarna_factory*, void**, quarna_deleter*, int32_t, size_t)>>);
static_assert(is<operations::adopt_buffer, Required<11, int(quarna_factory*, int32_t, const size_t*, size_t, void*, quarna_deleter, quarna_array**)>>);
static_assert(is<operations::adopt_buffer_in_order, Optional<110, int(quarna_factory*, int32_t, const size_t*, size_t, void*, quarna_deleter, quarna_array**, int32_t)>>);
static_assert(is<operations::get_dimensions, Required<51, int(const quarna_array*, size_t*, const size_t**)>>);
static_assert(is<operations::get_element_count, Required<52, size_t(const quarna_array*)>>);
static_assert(is<operations::get_type, Required<53, int(const quarna_array*, int32_t*)>>);
static_assert(is<operations::types_are_compatible, Required<59, int(int32_t, int32_t, bool*)>>);
static_assert(is<operations::unshare, Required<55, bool(const quarna_array*, bool, quarna_array**)>>);
static_assert(is<operations::release_buffer, Required<60, int(quarna_array*, bool, void**, quarna_deleter*)>>);
static_assert(is<operations::begin, Required<57, Walk>> && is<operations::begin_fast, Optional<114, Walk>>);
static_assert(is<operations::end, Required<58, Walk>> && is<operations::end_fast, Optional<115, Walk>>);
static_assert(is<operations::copy_iterator, Required<63, quarna_iterator*(const quarna_iterator*)>>);
static_assert(is<operations::destroy_iterator, Required<64, void(quarna_iterator*)>>);
static_assert(is<operations::get_address, Required<71, int(const quarna_iterator*, void**)>>);
static_assert(is<operations::get_complex_address, Optional<113, int(const quarna_iterator*, void**)>>);
static_assert(is<operations::dereference, Required<72, int(const quarna_iterator*, quarna_reference**)>>);
static_assert(is<operations::get_reference, Required<56, int(quarna_array*, size_t, quarna_reference**)>>);
static_assert(is<operations::get_part_addresses, Required<94, int(const quarna_reference*, void**, void**)>>);
static_assert(is<operations::set_complex, Required<96, int(quarna_reference*, int32_t, const void*, const void*)>>);
static_assert(is<operations::destroy_reference, Required<23, void(quarna_reference*)>>);

static_assert(is<types::LOGICAL, Type<0, 1, 1, bool>> && is<types::CHAR, Type<1, 2, 1, char16_t>>);
static_assert(is<types::DOUBLE, Type<3, 8, 1, double>> && is<types::COMPLEX_DOUBLE, Type<13, 16, 2, std::complex<double>>>);
static_assert(is<types::SINGLE, Type<4, 4, 1, float>> && is<types::COMPLEX_SINGLE, Type<14, 8, 2, std::complex<float>>>);
static_assert(is<types::INT8, Type<5, 1, 1, std::int8_t>> && is<types::COMPLEX_INT8, Type<15, 2, 2, std::complex<std::int8_t>>>);
static_assert(is<types::UINT8, Type<6, 1, 1, std::uint8_t>> && is<types::COMPLEX_UINT8, Type<16, 2, 2, std::complex<std::uint8_t>>>);
static_assert(is<types::INT16, Type<7, 2, 1, std::int16_t>> && is<types::COMPLEX_INT16, Type<17, 4, 2, std::complex<std::int16_t>>>);
static_assert(is<types::UINT16, Type<8, 2, 1, std::uint16_t>> && is<types::COMPLEX_UINT16, Type<18, 4, 2, std::complex<std::uint16_t>>>);
static_assert(is<types::INT32, Type<9, 4, 1, std::int32_t>> && is<types::COMPLEX_INT32, Type<19, 8, 2, std::complex<std::int32_t>>>);
static_assert(is<types::UINT32, Type<10, 4, 1, std::uint32_t>> && is<types::COMPLEX_UINT32, Type<20, 8, 2, std::complex<std::uint32_t>>>);
static_assert(is<types::INT64, Type<11, 8, 1, std::int64_t>> && is<types::COMPLEX_INT64, Type<21, 16, 2, std::complex<std::int64_t>>>);
static_assert(is<types::UINT64, Type<12, 8, 1, std::uint64_t>> && is<types::COMPLEX_UINT64, Type<22, 16, 2, std::complex<std::uint64_t>>>);

static_assert(is<codes::InvalidArrayIndex, Library<1>> && is<codes::StringIndexMustBeLast, Library<2>> && is<codes::StringIndexNotValid, Library<3>>);
static_assert(is<codes::NotEnoughIndices, Library<5>> && is<codes::TooManyIndices, Library<6>> && is<codes::OnlyOneStringIndex, Library<7>>);
static_assert(is<codes::DataTypeMismatch, Library<8>> && is<codes::ArrayTypeMismatch, Library<9>> && is<codes::FieldDoesNotExist, Library<10>>);
static_assert(is<codes::MissingClassName, Library<13>> && is<codes::WrongNumberOfEnums, Library<14>> && is<codes::NotAString, Library<16>>);
static_assert(is<codes::DuplicateFieldName, Library<18>> && is<codes::OutOfMemory, Library<19>> && is<codes::SystemError, Library<20>>);
static_assert(is<codes::EmptyArrayIndexed, Library<21>> && is<codes::MemoryLayoutMismatch, Library<23>> && is<codes::InputLayoutMismatch, Library<24>>);
static_assert(is<codes::OutputLayoutMismatch, Library<25>> && is<codes::TooManyElements, Library<26>> && is<codes::HeterogeneousObjects, Library<27>>);
static_assert(is<codes::LibraryText, Library<28>> && is<codes::LibraryDetail, Library<29>>);
static_assert(is<codes::FeatureNotSupported, Code<22, Origin::client>>);
// clang-format on

static_assert(QUARNA_SUCCESS == 0);
static_assert(QUARNA_LAYOUT_COLUMN_MAJOR == 0 && QUARNA_LAYOUT_ROW_MAJOR == 1);

#define QUARNA_ELEMENT_TYPE(number, name, bytes, parts, element) static_assert(sizeof(element) == (bytes));
#include "quarna_data_array/element_types.def"
static_assert(CHAR_BIT == 8 && sizeof(bool) == 1 && sizeof(std::size_t) == 8);
static_assert(sizeof(void*) == 8 && sizeof(get_function_ptr(0)) == 8 && sizeof(&get_function_ptr) == 8);

static_assert(sizeof(quarna_api) == 16);
static_assert(offsetof(quarna_api, from_data_array) == 0);
static_assert(offsetof(quarna_api, to_data_array) == 8);
static_assert(is<decltype(quarna_api::from_data_array), PyObject* (*)(void*)>);
static_assert(is<decltype(quarna_api::to_data_array), void* (*)(PyObject*)>);

}  // namespace
