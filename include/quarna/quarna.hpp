// Arrays of the module quarnamultidimarrayforpython for native code in C++20: made, handed over and read by type.
//
// Call importQuarna() once, when your module is imported. Whatever fails throws; guarded() is what makes an entry
// point of it. An ArrayHandle owns its array, a quarna_array* is borrowed. All of this needs the GIL.
#pragma once

#include "quarna/quarna.h"
#include "quarna_data_array/c_abi.h"

#include <complex>
#include <cstddef>
#include <cstdint>
#include <exception>
#include <memory>
#include <new>
#include <span>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace quarna::consumer {

/// Thrown where a Python exception is set already.
struct PythonError : std::exception {
    const char* what() const noexcept override { return "A Python exception is set."; }
};

/// The library has no such operation, or one answered with an error code.
struct LibraryError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

/// The array has elements of another type than the wanted one.
struct ElementTypeError : std::invalid_argument {
    using std::invalid_argument::invalid_argument;
};

/// What body() returns; or null with what it threw as the Python exception. Body throws std::exceptions only.
template <class Body>
PyObject* guarded(Body body)
{
    try {
        return body();
    } catch (PythonError const&) {
        return nullptr;
    } catch (std::bad_alloc const&) {
        return PyErr_NoMemory();
    } catch (ElementTypeError const& error) {
        PyErr_SetString(PyExc_TypeError, error.what());
    } catch (std::exception const& error) {
        PyErr_SetString(PyExc_RuntimeError, error.what());
    }
    return nullptr;
}

/// Throws for an error code of the library: std::bad_alloc where there is no memory for so many elements, or else
/// LibraryError.
inline void check(int code)
{
    if (code == QUARNA_ERROR_OutOfMemory || code == QUARNA_ERROR_TooManyElements) {
        throw std::bad_alloc();
    }
    if (code != QUARNA_SUCCESS) {
        throw LibraryError("The data-array library answered with error code " + std::to_string(code) + ".");
    }
}

/// The object, if the library had memory for it.
template <class Object>
Object* check(Object* made)
{
    return made != nullptr ? made : throw std::bad_alloc();
}

/// The library's operations by name, each looked up when it is first asked for: operation::get_type()(...).
/// Required operations only; the names of optional ones throw where the library lacks them.
namespace operation {

template <class Function>
Function find(int number)
{
    void* const found = get_function_ptr(number);
    if (found == nullptr) {
        throw LibraryError("The data-array library has no operation " + std::to_string(number) + ".");
    }
    return reinterpret_cast<Function>(found);
}

#define QUARNA_OPERATION(number, name, presence, result, arguments)        \
    inline quarna_##name##_function name()                                 \
    {                                                                      \
        static auto* const found = find<quarna_##name##_function>(number); \
        return found;                                                      \
    }
#include "quarna_data_array/operations.def"

}  // namespace operation

/// Frees with a function that was looked up when the owner was made.
template <class Object>
using Owned = std::unique_ptr<Object, void (*)(Object*)>;

using ArrayHandle = Owned<quarna_array>;

template <class T>
struct ElementType;  // undefined: arrays have no such elements

#define QUARNA_ELEMENT_TYPE(number, name, bytes, parts, element) \
    template <>                                                  \
    struct ElementType<element> {                                \
        static constexpr std::int32_t value = (number);          \
    };
#include "quarna_data_array/element_types.def"

/// The library's number for elements of type T.
template <class T>
inline constexpr std::int32_t elementType = ElementType<T>::value;

/// The name of a type number, as in "COMPLEX_INT8".
inline const char* elementTypeName(std::int32_t type)
{
    switch (type) {
#define QUARNA_ELEMENT_TYPE(number, name, bytes, parts, element) \
    case number:                                                 \
        return #name;
#include "quarna_data_array/element_types.def"
    default:
        return "unknown";
    }
}

/// The type number of the elements.
inline std::int32_t elementTypeOf(quarna_array const* array)
{
    std::int32_t type = -1;
    check(operation::get_type()(array, &type));
    return type;
}

inline std::vector<std::size_t> dimensions(quarna_array const* array)
{
    std::size_t count = 0;
    std::size_t const* lengths = nullptr;
    check(operation::get_dimensions()(array, &count, &lengths));
    return {lengths, lengths + count};
}

/// All elements in column-major order, if they are of type T. Good as long as the array's handle is.
template <class T>
std::span<T const> elements(quarna_array* array)
{
    if (std::int32_t const type = elementTypeOf(array); type != elementType<T>) {
        throw ElementTypeError(std::string("expected elements of type ") + elementTypeName(elementType<T>) +
                               ", not " + elementTypeName(type) + ".");
    }
    std::size_t const count = operation::get_element_count()(array);
    if (count == 0) {
        return {};
    }
    Owned<quarna_reference> owner(nullptr, operation::destroy_reference());
    quarna_reference* first = nullptr;
    check(operation::get_reference()(array, 0, &first));
    owner.reset(first);
    void* address = nullptr;  // of the real part, with which the element begins
    void* imaginary = nullptr;
    check(operation::get_part_addresses()(first, &address, &imaginary));
    return {static_cast<T const*>(address), count};
}

/// A new column-major array of T. fill(std::span<T>) writes the elements, all of them: they start as rubbish.
template <class T, class Fill>
ArrayHandle makeArray(std::vector<std::size_t> const& dimensions, Fill fill)
{
    std::size_t count = 1;
    for (std::size_t const length : dimensions) {
        if (__builtin_mul_overflow(count, length, &count)) {
            throw std::bad_alloc();
        }
    }
    ArrayHandle made(nullptr, operation::destroy_array());
    auto* const adopt = operation::adopt_buffer();

    Owned<quarna_factory> factoryOwner(nullptr, operation::destroy_factory());
    quarna_factory* factory = nullptr;
    check(operation::create_factory()(&factory));
    factoryOwner.reset(factory);

    void* block = nullptr;
    quarna_deleter deleter = nullptr;
    check(operation::create_buffer()(factory, &block, &deleter, elementType<T>, count));
    Owned<void> blockOwner(block, deleter);
    fill(std::span(static_cast<T*>(check(block)), count));

    // From the call on the block is the library's, whatever becomes of the array.
    quarna_array* array = nullptr;
    check(adopt(factory, elementType<T>, dimensions.data(), dimensions.size(), blockOwner.release(), deleter,
                &array));
    made.reset(array);
    return made;
}

inline quarna_api const* api = nullptr;
inline destructor arrayDestructor = nullptr;

/// A new reference to an array object over the array.
inline PyObject* toPython(ArrayHandle array)
{
    PyObject* const object = api->from_data_array(array.release());
    return object != nullptr ? object : throw PythonError();
}

/// Imports the module, whose arrays are known from then on.
inline void importQuarna()
{
    api = static_cast<quarna_api const*>(PyCapsule_Import(QUARNA_CAPSULE_NAME, 0));
    if (api == nullptr) {
        throw PythonError();
    }
    // An array of the module's own making shows what is an array; names in a module could have been rebound.
    ArrayHandle empty(nullptr, operation::destroy_array());
    empty.reset(check(operation::create_empty_array()()));
    Owned<PyObject> const sample(toPython(std::move(empty)), &Py_DecRef);
    arrayDestructor = Py_TYPE(sample.get())->tp_dealloc;
}

/// Whether the object is an array of the module, of any class.
inline bool isArray(PyObject* object)
{
    return Py_TYPE(object)->tp_dealloc == arrayDestructor;
}

/// The data array of an array object, borrowed as quarna.h tells; a TypeError is set for any other object.
inline quarna_array* fromPython(PyObject* object)
{
    if (!isArray(object)) {
        PyErr_Format(PyExc_TypeError, "expected an array of quarna, not %.200s.", Py_TYPE(object)->tp_name);
        throw PythonError();
    }
    void* const array = api->to_data_array(object);
    return array != nullptr ? static_cast<quarna_array*>(array) : throw PythonError();
}

}  // namespace quarna::consumer
