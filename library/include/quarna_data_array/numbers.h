/* The numbers that library and client exchange, by name. A name is that of the row with its table's prefix. */
#ifndef QUARNA_DATA_ARRAY_NUMBERS_H
#define QUARNA_DATA_ARRAY_NUMBERS_H

/* What get_function_ptr() takes. */
enum quarna_operation {
#define QUARNA_OPERATION(number, name, presence, result, arguments) QUARNA_OPERATION_##name = (number),
#include "quarna_data_array/operations.def"
};

/* The type of an array's elements. */
enum quarna_element_type {
#define QUARNA_ELEMENT_TYPE(number, name, bytes, parts, element) QUARNA_TYPE_##name = (number),
#include "quarna_data_array/element_types.def"
};

/* What an operation that can fail answers. */
enum quarna_error_code {
    QUARNA_SUCCESS = 0,
#define QUARNA_ERROR_CODE(number, name, origin, message) QUARNA_ERROR_##name = (number),
#include "quarna_data_array/error_codes.def"
};

/* How elements lie in a block: the first index fastest, or the last. */
enum quarna_layout { QUARNA_LAYOUT_COLUMN_MAJOR = 0, QUARNA_LAYOUT_ROW_MAJOR = 1 };

#endif
