// Opens the project that a command line names, as every command does.
#pragma once

#include "cli/environment.h"
#include "cli/exit_status.h"
#include "cli/options.h"
#include "cli/output/messages.h"
#include "cli/output/progress.h"
#include "hostmodel/globals.h"
#include "workspace/open.h"

#include <expected>
#include <memory>

namespace lintara::cli {

struct OpenFailure {
    ExitStatus status = ExitStatus::Failed;
    workspace::Diagnostics errors;
};

struct OpenedProject {
    workspace::Diagnostics warnings;
    workspace::Diagnostics unreadable;  // about components that were left out, with --keep-going
};

// Reads standard input when that holds the component.
[[nodiscard]] std::expected<OpenedProject, OpenFailure> OpenProject(workspace::Workspace& workspace,
                                                                    const ReadOptions& options, Source& in,
                                                                    Progress& progress);

// For commands that only read: tells what is wrong, too. The error is the status to end with.
[[nodiscard]] std::expected<workspace::Diagnostics, ExitStatus> OpenOrComplain(
    workspace::Workspace& workspace, const ReadOptions& options, Source& in, Progress& progress,
    Messages& messages);

// The services object over the workspace, on this machine.
[[nodiscard]] std::shared_ptr<hostmodel::Globals> MakeGlobals(workspace::Workspace& workspace,
                                                              const Environment& environment);

}  // namespace lintara::cli
