// The one way to Python.h, which must come before every standard header.
#pragma once

#define PY_SSIZE_T_CLEAN
#include <Python.h>
