// The functions that other native modules reach through the capsule.
#pragma once

#include "quarna/quarna.h"

namespace quarna::QCPyArrayAPI {

/// What the capsule points to.
extern quarna_api const table;

}  // namespace quarna::QCPyArrayAPI
