// A replacement of texts in a component, done over on the lines that were there and held against the lines
// that are.
#pragma once

#include "cli/invariants/body_check.h"
#include "cli/invariants/code_lines.h"
#include "cli/invariants/edit_rules.h"

#include <optional>

namespace lintara::cli {

[[nodiscard]] std::optional<BodyFault> CheckReplacement(const CodeLines& before, const CodeLines& after,
                                                        const ReplaceRules& rules);

// The same for the library's work as it is: it may meet its own output and change a line any number of times,
// but only lines that hold the text, and none outside those to be changed.
[[nodiscard]] std::optional<BodyFault> CheckExactReplacement(const CodeLines& before, const CodeLines& after,
                                                             const ReplaceRules& rules);

}  // namespace lintara::cli
