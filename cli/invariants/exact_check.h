// What must hold even after an edit without the command's care.
#pragma once

#include "cli/invariants/body_check.h"
#include "cli/invariants/code_lines.h"
#include "cli/invariants/edit_rules.h"

#include <optional>

namespace lintara::cli {

[[nodiscard]] std::optional<BodyFault> CheckExactEdit(const CodeLines& before, const CodeLines& after,
                                                      const EditRules& rules,
                                                      const EditableProcedures& editable);

}  // namespace lintara::cli
