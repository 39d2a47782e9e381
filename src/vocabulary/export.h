// Marks what other native code of the process may link to; everything else is hidden.
#pragma once

#define QUARNA_EXPORT __attribute__((visibility("default")))
