// The controls of the scripted library: a count, and failures on request.
#pragma once

#include "quarna_data_array/numbers.h"

extern "C" {

/// Arrays, factories, iterators, references and handed-out blocks that nobody has freed yet.
long scripted_live_objects();

/// Lets `after` more calls of the operation pass; each later one answers `code`, or null where it returns
/// no code, with its out-arguments null. QUARNA_SUCCESS ends it. Operations that free are never refused.
void scripted_fail(quarna_operation operation, quarna_error_code code, int after);

/// No operation fails. What QUARNA_SCRIPT_OMIT left out at the start stays out.
void scripted_reset();
}
