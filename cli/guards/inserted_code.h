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
// can be inserted. `label` is one that stands in front of it, if any.
[[nodiscard]] std::optional<std::string> ObjectionToCode(TextView code, TextView label = {});

// Whether the line is "Attribute ...": in a file, the IDE hides it and reads it as something else than code.
[[nodiscard]] bool IsAttributeLine(TextView line);

}  // namespace lintara::cli
