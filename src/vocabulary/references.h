// Owning references to Python objects.
//
// A PyObject* is borrowed: whoever holds one neither drops nor keeps it. A Reference owns. It is made by steal
// (from a function that returns a new reference, null included) or by borrow (which adds a reference), and left
// by release() alone, which hands the reference to the caller or to a function that steals. A function that
// returns PyObject* to the interpreter returns a new reference or null with an exception set.
//
// Dropping a reference can run Python code, in which the interpreter may end the thread by unwinding it. So no
// Reference lies in what is noexcept when it goes: an optional, a vector or a smart pointer of the standard library.
#pragma once

#include "vocabulary/python.h"

#include "vocabulary/thread.h"

#include <utility>

namespace quarna {

class Reference {
public:
    Reference() = default;
    Reference(Reference const&) = delete;
    Reference& operator=(Reference const&) = delete;
    Reference(Reference&& other) noexcept : m_object(std::exchange(other.m_object, nullptr)) {}
    Reference& operator=(Reference&& other) noexcept
    {
        std::swap(m_object, other.m_object);
        return *this;
    }
    ~Reference() noexcept(false)
    {
        if (m_object != nullptr && threadHasPython()) {
            Py_DECREF(m_object);
        }
    }

    static Reference steal(PyObject* object) { return Reference(object); }
    static Reference borrow(PyObject* object)
    {
        Py_XINCREF(object);
        return Reference(object);
    }

    PyObject* get() const { return m_object; }
    explicit operator bool() const { return m_object != nullptr; }
    [[nodiscard]] PyObject* release() { return std::exchange(m_object, nullptr); }

private:
    explicit Reference(PyObject* object) : m_object(object) {}

    PyObject* m_object = nullptr;
};

}  // namespace quarna
