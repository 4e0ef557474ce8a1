// Commands that ask about one place in a project: the caret of --at.
#pragma once

#include "cli/environment.h"
#include "cli/exit_status.h"
#include "cli/options/option_reader.h"
#include "workspace/workspace.h"

#include <expected>

namespace lintara::cli {

// --at, which must be given.
[[nodiscard]] OptionInfo CaretOption();

// Opens the project of the options and makes the caret's code pane the active one, which is the value. What
// is wrong is told on standard error; the error is the status to end with.
[[nodiscard]] std::expected<workspace::ActivePane, ExitStatus> OpenAtCaret(workspace::Workspace& workspace,
                                                                           const OptionReader& given,
                                                                           Environment& environment);

}  // namespace lintara::cli
