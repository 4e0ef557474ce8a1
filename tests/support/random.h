// Random numbers that are the same on every machine: what the generators of code draw from. The standard
// library's distributions would differ from one implementation to the next.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>

namespace lintara::support {

class Random {
  public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    [[nodiscard]] std::uint64_t Next() {
        state_ += 0x9E3779B97F4A7C15U;
        std::uint64_t mixed = state_;
        mixed = (mixed ^ (mixed >> 30U)) * 0xBF58476D1CE4E5B9U;
        mixed = (mixed ^ (mixed >> 27U)) * 0x94D049BB133111EBU;
        return mixed ^ (mixed >> 31U);
    }

    // A number from 0 to limit - 1; `limit` is small, so the bias of the remainder does not matter.
    [[nodiscard]] std::size_t Below(std::size_t limit) { return static_cast<std::size_t>(Next() % limit); }

    [[nodiscard]] bool Chance(std::size_t percent) { return Below(100) < percent; }

    template <class T, std::size_t N>
    [[nodiscard]] const T& Pick(const std::array<T, N>& choices) {
        return choices[Below(N)];
    }

  private:
    std::uint64_t state_;
};

}  // namespace lintara::support
