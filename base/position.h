// Lines and columns of a code module. Both count from 1, columns in UTF-16 code units. They are types of
// their own, so that a line is never taken for a column, nor either for a count.
#pragma once

#include <compare>
#include <cstdint>

namespace lintara {

// A 1-based 32-bit place in a sequence. Any value may be held: 0 and -1 serve the callers as "none yet".
// place + count is a place, place - place a count; there is no place + place.
template <class Tag>
class Ordinal {
  public:
    constexpr Ordinal() = default;
    constexpr explicit Ordinal(std::int32_t value) : value_(value) {}

    [[nodiscard]] constexpr std::int32_t value() const { return value_; }

    constexpr Ordinal& operator+=(std::int32_t count) {
        value_ += count;
        return *this;
    }
    constexpr Ordinal& operator-=(std::int32_t count) {
        value_ -= count;
        return *this;
    }
    constexpr Ordinal& operator++() { return *this += 1; }
    constexpr Ordinal& operator--() { return *this -= 1; }

    friend constexpr Ordinal operator+(Ordinal place, std::int32_t count) { return place += count; }
    friend constexpr Ordinal operator-(Ordinal place, std::int32_t count) { return place -= count; }
    friend constexpr std::int32_t operator-(Ordinal a, Ordinal b) { return a.value_ - b.value_; }
    friend constexpr auto operator<=>(Ordinal, Ordinal) = default;

  private:
    std::int32_t value_ = 0;
};

using Line = Ordinal<struct LineTag>;
using Column = Ordinal<struct ColumnTag>;

// Positions compare as (line, column), also past the end of a line.
struct Position {
    Line line;
    Column column;

    friend constexpr auto operator<=>(const Position&, const Position&) = default;
};

// The lines from `begin` up to, not including, `end`.
struct LineRange {
    Line begin;
    Line end;

    [[nodiscard]] constexpr bool Contains(Line line) const { return begin <= line && line < end; }
    [[nodiscard]] constexpr std::int32_t count() const { return end - begin; }
    friend constexpr bool operator==(const LineRange&, const LineRange&) = default;
};

}  // namespace lintara
