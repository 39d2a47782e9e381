// Products of dimensions and sizes, which never wrap.
#pragma once

#include <optional>
#include <span>

namespace quarna {

/// a times b, both nonnegative; empty if it needs more than 63 bits.
inline std::optional<long> checkedProduct(long a, long b)
{
    long product = 0;
    if (__builtin_mul_overflow(a, b, &product)) {
        return std::nullopt;
    }
    return product;
}

/// The product of all lengths, 1 for none; empty if it needs more than 63 bits. A 0 among them makes it 0.
inline std::optional<long> checkedProduct(std::span<long const> lengths)
{
    for (long const length : lengths) {
        if (length == 0) {
            return 0;
        }
    }
    std::optional<long> product = 1;
    for (long const length : lengths) {
        product = checkedProduct(*product, length);
        if (!product) {
            break;
        }
    }
    return product;
}

}  // namespace quarna
