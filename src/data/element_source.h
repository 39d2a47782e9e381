// Elements that lie in memory already, in place of a sequence that would give them one by one.
#pragma once

#include "data/array_type.h"
#include "elements/strided_view.h"

namespace quarna {

/// What a sequence holds, nested as the view is. Good while the sequence is left alone. Where there is no block, each
/// element is the number of its offset, as in a range.
struct ElementSource {
    data::ArrayType type;
    void const* block;
    StridedView view;
};

}  // namespace quarna
