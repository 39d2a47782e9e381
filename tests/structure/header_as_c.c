#include "quarna_data_array/c_abi.h"

/* The one symbol has the type that every client casts to. */
void* (*quarna_imported)(int) = get_function_ptr;
