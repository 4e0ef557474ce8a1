// Line numbers that a procedure has already, in lines of its body.
#pragma once

#include "base/text.h"

#include <cstdint>
#include <optional>
#include <span>
#include <vector>

namespace lintara::cli {

// The first line that the library takes for a numbered one; insertion would leave it alone.
[[nodiscard]] std::optional<std::size_t> FindNumericLabel(std::span<const Text> lines);

// The first logical line with a number that the library does not see, as other tools write them: digits and
// no colon, or behind blanks. Numbering would put a second number in front of it.
[[nodiscard]] std::optional<std::size_t> FindForeignNumber(std::span<const Text> lines);

// The number in front of each line, of any form that the language knows. A line that continues another has
// none.
[[nodiscard]] std::vector<std::optional<std::int64_t>> NumbersAtStartOf(std::span<const Text> lines);

// A number of the form that insertion writes and removal takes off whole: five digits, a colon, a blank.
[[nodiscard]] std::optional<std::int32_t> FiveDigitNumber(TextView line);

struct NumberedLine {
    std::size_t index = 0;
    std::int32_t number = 0;  // -1 when it has not the form that removal expects

    friend bool operator==(const NumberedLine&, const NumberedLine&) = default;
};

// Appends the lines that the library takes for numbered ones. A line that continues another one is none of
// them: what looks like its number is text.
void FindNumberedLines(std::span<const Text> lines, std::vector<NumberedLine>& numbered);

}  // namespace lintara::cli
