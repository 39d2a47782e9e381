#include "quarna/quarna.h"
#include "quarna_data_array/c_abi.h"

#include <limits.h>
#include <stddef.h>

/* The one symbol of the library and the one import have the types that every client relies on. */
void* (*quarna_imported)(int) = get_function_ptr;
int (*quarna_importer)(void) = quarna_import;

/* The sizes, offsets and numbers that have no row of a table. */
_Static_assert(QUARNA_SUCCESS == 0, "success");
_Static_assert(QUARNA_LAYOUT_COLUMN_MAJOR == 0 && QUARNA_LAYOUT_ROW_MAJOR == 1, "layouts");
_Static_assert(CHAR_BIT == 8 && sizeof(bool) == 1 && sizeof(size_t) == 8, "arguments by value");
_Static_assert(sizeof(void*) == 8 && sizeof(quarna_deleter) == 8, "arguments by address");
_Static_assert(sizeof(quarna_api) == 16 && offsetof(quarna_api, to_data_array) == 8, "the capsule's table");

/* C can use the table of element types without the elements, and that of messages. */
#define QUARNA_ELEMENT_TYPE(number, name, bytes, parts, element) \
    _Static_assert((bytes) % (parts) == 0 && (parts) <= 2, #name);
#include "quarna_data_array/element_types.def"
#define QUARNA_ERROR_CODE(number, name, origin, message) _Static_assert(sizeof(message) != 0, #name);
#include "quarna_data_array/error_codes.def"
