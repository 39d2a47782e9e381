// Byte strides of contiguous storage.
#include "wrapper/layout.h"

#include "vocabulary/arithmetic.h"

#include <cstddef>

std::vector<long> quarna::contiguousStrides(std::span<long const> shape, long elementSize, char order)
{
    std::vector<long> strides(shape.size());
    long stride = elementSize;
    for (std::size_t step = 0; step < shape.size(); ++step) {
        std::size_t const dimension = order == 'F' ? step : shape.size() - 1 - step;
        strides[dimension] = stride;
        stride = checkedProduct(stride, shape[dimension]).value_or(0);
    }
    return strides;
}
