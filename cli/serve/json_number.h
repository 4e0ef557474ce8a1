// Numbers as JSON writes them, taken exactly: 1.0 and 1e3 are whole, and so is a number far beyond what a
// `double` holds.
#pragma once

#include <cstdint>
#include <expected>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::cli {

enum class NotWhole : unsigned char { Fraction, TooLarge };

// The value of a number that is whole and has at most 18 digits. `number` must be one by JSON's grammar.
[[nodiscard]] std::expected<std::int64_t, NotWhole> WholeValue(std::string_view number);

// The parser refuses numbers beyond the range of `double`, which JSON allows. Here they give way to one that
// it takes, and so do all others with an exponent.
inline constexpr std::string_view numberStandIn = "1e300";
struct TamedNumbers {
    std::string text;
    std::vector<std::string> replaced;  // what stands in for each stand-in, in order
};
[[nodiscard]] TamedNumbers TameNumbers(std::string_view json);

}  // namespace lintara::cli
