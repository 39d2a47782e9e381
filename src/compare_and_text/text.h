// The text of arrays.
#pragma once

#include "indexing/qcpp_py_array.h"

#include <optional>
#include <string>

namespace quarna {

/// The nested list as Python prints it without blanks, as a constructor call if `asRepr`; empty with an exception set.
/// T is the array's element type.
template <class T>
std::optional<std::string> textOf(QCppPyArray const& array, bool asRepr);

}  // namespace quarna
