// Line labels: which names may be one, and which a piece of code has.
#pragma once

#include "base/text.h"

#include <cstddef>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace lintara::cli {

// What is wrong with a text as a label, as the end of a sentence: "it must begin with a letter"; none when it
// is one.
[[nodiscard]] std::optional<std::string> LabelProblem(TextView label);

// The label at the start of a logical line, behind its number too; "" when it has none.
[[nodiscard]] TextView LabelOfLine(TextView logicalLine);

// The index of the first line, among whole logical lines, that has the label.
[[nodiscard]] std::optional<std::size_t> FindLabel(std::span<const Text> lines, TextView label);

// The labels of the lines, which are whole logical lines.
[[nodiscard]] std::vector<Text> LabelsIn(std::span<const Text> lines);

}  // namespace lintara::cli
