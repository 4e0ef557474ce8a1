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

}  // namespace lintara::cli
