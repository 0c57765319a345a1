#pragma once

#include <cstdint>

#include "core/foundation/fatal.h"

namespace tapcore {

/// a + b; fatal when the sum leaves 64 bits.
[[nodiscard]] inline std::int64_t checkedSum(std::int64_t a, std::int64_t b) {
    std::int64_t sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) fatal("a count does not fit into 64 bits");
    return sum;
}

/// a * b; fatal when the product leaves 64 bits.
[[nodiscard]] inline std::int64_t checkedProduct(std::int64_t a, std::int64_t b) {
    std::int64_t product = 0;
    if (__builtin_mul_overflow(a, b, &product)) fatal("a count does not fit into 64 bits");
    return product;
}

/// total += more; fatal when the sum leaves 64 bits.
inline void addChecked(std::int64_t& total, std::int64_t more) { total = checkedSum(total, more); }

}  // namespace tapcore
