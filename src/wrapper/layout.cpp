// Byte strides of contiguous storage.
#include "wrapper/layout.h"

#include "vocabulary/arithmetic.h"

#include <cstddef>

std::optional<std::vector<long>> quarna::contiguousStrides(std::span<long const> shape, long elementSize,
                                                           char order)
{
    std::vector<long> strides(shape.size());
    std::optional<long> stride = elementSize;
    for (std::size_t step = 0; step < shape.size(); ++step) {
        if (!stride) {
            return std::nullopt;
        }
        std::size_t const dimension = order == 'F' ? step : shape.size() - 1 - step;
        strides[dimension] = *stride;
        stride = checkedProduct(*stride, shape[dimension]);
    }
    return strides;
}
