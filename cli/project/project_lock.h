// Waits its turn when another run works on the project, and says that it waits.
#pragma once

#include "cli/output/messages.h"
#include "workspace/project_lock.h"

#include <expected>
#include <filesystem>

namespace lintara::cli {

[[nodiscard]] std::expected<workspace::ProjectLock, workspace::Diagnostic> LockProject(
    const std::filesystem::path& path, double waitSeconds, Messages& messages);

}  // namespace lintara::cli
