/* Exchanging arrays with the module quarnamultidimarrayforpython, for native code of the same process.
 *
 * An array travels as a handle of libQuarnaDataArray.so, a quarna_array*, whose numbered operations read and make
 * it: see quarna_data_array/c_abi.h and the tables beside it. Call quarna_import() once, when your module is imported;
 * then use the functions of `QuarnaAPI`. All of this needs the GIL. Valid C and C++; for C++20, quarna.hpp puts
 * owning handles, checks and exceptions on top.
 */
#ifndef QUARNA_QUARNA_H
#define QUARNA_QUARNA_H

#ifndef PY_SSIZE_T_CLEAN
#define PY_SSIZE_T_CLEAN
#endif
#include <Python.h>

#ifdef __cplusplus
extern "C" {
#endif

struct quarna_array;

#define QUARNA_CAPSULE_NAME "quarnamultidimarrayforpython._capi"

/* What the capsule points to. The order is frozen; functions are only ever added at the end. */
typedef struct {
    /* A new reference to an array object over the data array, or NULL with an exception set: RuntimeError for a
     * null handle ("null data pointer.") or an element type that no class holds ("invalid type."), MemoryError.
     * The elements must be in column-major order. The class follows from their type.
     *
     * Takes ownership of the handle in every case, failures included: neither use nor destroy it afterwards. */
    PyObject* (*from_data_array)(void* handle);

    /* The handle of an array object's data array, or NULL with an exception set. A full array gives its own data
     * array; a partial array a copy of exactly what it selects, 1-by-N if one dimension is open, made at the first
     * call and the same at every later one.
     *
     * The object must be an array of this module; nothing tests that, and any other object crashes. What is an
     * array has the tp_dealloc that the type of each result of from_data_array has: no class can be derived from
     * the eleven, and nothing else has that tp_dealloc.
     *
     * Borrowed: do not destroy the handle. It is good while you hold a reference to the object, and for a full
     * array until Python code reshapes the array, or writes to it while somebody else holds its data array too.
     * Only read from it: the array object would not see what you write before it is reshaped. From the first
     * request on, a full array keeps its elements twice. */
    void* (*to_data_array)(PyObject* array);
} quarna_api;

/* The functions, once quarna_import() has returned 0. Each translation unit has its own. */
static const quarna_api* QuarnaAPI = NULL;

/* Imports the module. 0, or -1 with an exception set. */
static inline int quarna_import(void)
{
    QuarnaAPI = (const quarna_api*)PyCapsule_Import(QUARNA_CAPSULE_NAME, 0);
    return QuarnaAPI != NULL ? 0 : -1;
}

#ifdef __cplusplus
}
#endif

#endif
