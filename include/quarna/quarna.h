/* Exchanging arrays with the module quarnamultidimarrayforpython, for native code of the same process.
 *
 * An array travels as a handle of libQuarnaDataArray.so, a quarna_array*, whose numbered operations read and make
 * it. Call quarna_import() once, when your module is imported; then use the functions of `QuarnaAPI`. All of this
 * needs the GIL. Valid C and C++.
 */
#ifndef QUARNA_QUARNA_H
#define QUARNA_QUARNA_H

#define PY_SSIZE_T_CLEAN
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
     * Takes ownership of the handle in every case, failures included: do not destroy it afterwards. */
    PyObject* (*from_data_array)(void* handle);

    /* The handle of an array object's data array, or NULL with an exception set. The object must be an array of
     * this module; no test is made. A full array gives its own data array; a partial array a copy of exactly what
     * it selects, 1-by-N if one dimension is open, made at the first call and the same at every later one.
     *
     * Borrowed: do not destroy the handle. It is good while you hold a reference to the object, and for a full
     * array until the array is reshaped, or written while somebody else holds its data array too. */
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
