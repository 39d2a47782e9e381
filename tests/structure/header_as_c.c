#include "quarna/quarna.h"
#include "quarna_data_array/c_abi.h"

/* The one symbol of the library and the one import have the types that every client relies on. */
void* (*quarna_imported)(int) = get_function_ptr;
int (*quarna_importer)(void) = quarna_import;
