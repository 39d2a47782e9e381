// The arguments of a class's constructor, taken from a Python call.
#pragma once

#include "vocabulary/python.h"

#include "vocabulary/references.h"

namespace quarna {

/// The four arguments, held: Python code that runs while one is read may drop the others.
struct ConstructorArguments {
    Reference initializer;
    Reference size;
    Reference vector;
    bool isComplex = false;
    bool vectorIsKeyword = false;
};

/// Takes the arguments apart. Without keywords, a leading dictionary stands for them. False with an exception set:
/// CPython's TypeError, or a TypeError for an is_complex that is no bool. Runs no Python code.
bool parseConstructorArguments(PyObject* args, PyObject* kwds, ConstructorArguments& arguments);

}  // namespace quarna
