// Equality of arrays.
#pragma once

#include "indexing/qcpp_py_array.h"

#include <optional>

namespace quarna {

/// Whether both have one class, nest alike and hold numbers that Python calls equal; empty, with an exception set, if
/// one is stale. Real is the real element of the left array's class.
template <class Real>
std::optional<bool> areEqual(QCppPyArray const& left, QCppPyArray const& right);

}  // namespace quarna
