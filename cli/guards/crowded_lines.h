// Lines on which a text stands so often that to replace it would take minutes or hours: the library reads and
// writes the whole line for each match. No line that the IDE takes is long enough to be one.
#pragma once

#include "base/text.h"

#include <cstddef>
#include <optional>
#include <span>

namespace lintara::cli {

// The number of matches on a line, times the line's characters, at most; SECURITY.md names it.
inline constexpr std::size_t mostRewriting = std::size_t{1} << 24;

[[nodiscard]] constexpr bool IsCrowded(std::size_t matches, std::size_t characters) {
    return matches > mostRewriting / (characters + 1);
}

// The index of the first line on which `sought`, which is not empty, stands too often.
[[nodiscard]] std::optional<std::size_t> FindCrowdedLine(std::span<const Text> lines, TextView sought);

}  // namespace lintara::cli
