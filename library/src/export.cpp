// The one symbol that the library exports.
#include "function_table.h"
#include "quarna_data_array/c_abi.h"

extern "C" __attribute__((visibility("default"))) void* get_function_ptr(int id)
{
    return quarna::library::findOperation(id);
}
