// The course of the commands that put files of a project back without opening it: lock it, act, and tell what
// was done or what is wrong.
#pragma once

#include "cli/environment.h"
#include "cli/exit_status.h"
#include "workspace/diagnostic.h"

#include <expected>
#include <filesystem>
#include <functional>
#include <string>

namespace lintara::cli {

// Says what was done, for standard output.
using LockedAction = std::function<std::expected<std::string, workspace::Diagnostics>()>;

// Waits up to `waitSeconds` for another run on the project. Nothing is done when the lock cannot be had.
[[nodiscard]] ExitStatus RunLocked(const std::filesystem::path& project, double waitSeconds,
                                   Environment& environment, const LockedAction& act);

}  // namespace lintara::cli
