// Waits its turn when another run works on the project, and says that it waits.
#pragma once

#include "cli/messages.h"
#include "cli/options.h"
#include "workspace/project_lock.h"

#include <expected>

namespace lintara::cli {

[[nodiscard]] std::expected<workspace::ProjectLock, workspace::Diagnostic> LockProject(const Options& options,
                                                                                       Messages& messages);

}  // namespace lintara::cli
