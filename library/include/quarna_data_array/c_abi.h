/* The C face of libQuarnaDataArray.so: numbers, opaque types, one function type for each operation, one import. */
#ifndef QUARNA_DATA_ARRAY_C_ABI_H
#define QUARNA_DATA_ARRAY_C_ABI_H

#include "quarna_data_array/numbers.h"

#include <stdbool.h>
#include <stddef.h>
#include <stdint.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Each object has one owner, who frees it with its own destroy operation. */
typedef struct quarna_array quarna_array;
typedef struct quarna_factory quarna_factory;
typedef struct quarna_iterator quarna_iterator;
typedef struct quarna_reference quarna_reference;

/* Frees a block of elements; travels with the block that it frees. */
typedef void (*quarna_deleter)(void* block);

/* quarna_create_factory_function and its like: the type to cast the result of get_function_ptr() to. */
#define QUARNA_OPERATION(number, name, presence, result, arguments) \
    typedef result(*quarna_##name##_function) arguments;
#include "quarna_data_array/operations.def"

/* The operation of a number of operations.def, or null where the library has none. Never fails. */
void* get_function_ptr(int id);

#ifdef __cplusplus
}
#endif

#endif
