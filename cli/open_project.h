// Opens the project that a command line names, as every command does.
#pragma once

#include "cli/exit_status.h"
#include "cli/messages.h"
#include "cli/options.h"
#include "cli/progress.h"
#include "workspace/open.h"

#include <expected>

namespace lintara::cli {

struct OpenFailure {
    ExitStatus status = ExitStatus::Failed;
    workspace::Diagnostics errors;
};

// The value holds warnings.
[[nodiscard]] std::expected<workspace::Diagnostics, OpenFailure> OpenProject(workspace::Workspace& workspace,
                                                                             const Options& options,
                                                                             Progress& progress);

// For commands that only read: tells what is wrong, too. The error is the status to end with.
[[nodiscard]] std::expected<workspace::Diagnostics, ExitStatus> OpenOrComplain(
    workspace::Workspace& workspace, const Options& options, Progress& progress, Messages& messages);

}  // namespace lintara::cli
