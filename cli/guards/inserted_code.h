// Whether a piece of code can stand in the body of a procedure without changing where procedures begin and
// end, and what follows it.
#pragma once

#include "base/text.h"

#include <optional>
#include <string>
#include <vector>

namespace lintara::cli {

// The lines of a text, which CR LF separates.
[[nodiscard]] std::vector<Text> SplitLines(TextView text);

// What speaks against `code`, as the end of a sentence about it: "line 3 closes a procedure". None when it
// can be inserted.
[[nodiscard]] std::optional<std::string> ObjectionToCode(TextView code);

}  // namespace lintara::cli
