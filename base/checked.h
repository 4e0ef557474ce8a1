// 32-bit arithmetic as the language does it: a result outside the range is a run-time error, not a wrap.
#pragma once

#include "base/result.h"

#include <cstdint>

namespace lintara {

[[nodiscard]] inline Result<std::int32_t> CheckedAdd(std::int32_t a, std::int32_t b) {
    std::int32_t sum = 0;
    if (__builtin_add_overflow(a, b, &sum)) {
        return Failure(ErrorNumber::Overflow, "the sum leaves the 32-bit range");
    }
    return sum;
}

[[nodiscard]] inline Result<std::int32_t> CheckedSubtract(std::int32_t a, std::int32_t b) {
    std::int32_t difference = 0;
    if (__builtin_sub_overflow(a, b, &difference)) {
        return Failure(ErrorNumber::Overflow, "the difference leaves the 32-bit range");
    }
    return difference;
}

[[nodiscard]] inline Result<std::int32_t> CheckedMultiply(std::int32_t a, std::int32_t b) {
    std::int32_t product = 0;
    if (__builtin_mul_overflow(a, b, &product)) {
        return Failure(ErrorNumber::Overflow, "the product leaves the 32-bit range");
    }
    return product;
}

}  // namespace lintara
