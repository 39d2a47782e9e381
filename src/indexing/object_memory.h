// The memory of the module's own Python objects.
#pragma once

#include "vocabulary/python.h"

#include <cstddef>
#include <new>

namespace quarna {

/// Objects of one kind: a record, and behind it the native object that the record points to, so that both take one
/// block. To Python, an object is as large as its record. The memory of some that went is kept for the next ones;
/// all of it runs under the GIL.
template <class Record, class Native>
class ObjectMemory {
public:
    /// A new object without its native one; null with MemoryError set.
    static PyObject* allocate(PyTypeObject* type)
    {
        void* const memory = s_kept != nullptr ? takeKept() : PyObject_Malloc(sizeof(Whole));
        if (memory == nullptr) {
            return PyErr_NoMemory();
        }
        new (memory) Record{};
        return PyObject_Init(static_cast<PyObject*>(memory), type);
    }

    /// Where the native object of an object is to be made.
    static void* nativeMemory(PyObject* object) { return reinterpret_cast<Whole*>(object)->native; }

    static void free(PyObject* object)
    {
        if (s_keptCount < mostKept) {
            s_kept = new (object) Kept{s_kept};
            ++s_keptCount;
        } else {
            PyObject_Free(object);
        }
    }

private:
    struct Whole {
        Record record;
        alignas(Native) std::byte native[sizeof(Native)];
    };

    struct Kept {
        Kept* next;
    };

    static constexpr int mostKept = 64;

    static void* takeKept()
    {
        Kept* const first = s_kept;
        s_kept = first->next;
        --s_keptCount;
        return first;
    }

    static inline Kept* s_kept = nullptr;
    static inline int s_keptCount = 0;
};

}  // namespace quarna
