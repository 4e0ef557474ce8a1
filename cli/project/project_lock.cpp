#include "cli/project/project_lock.h"

#include <algorithm>
#include <chrono>

namespace lintara::cli {

std::expected<workspace::ProjectLock, workspace::Diagnostic> LockProject(const std::filesystem::path& path,
                                                                         double waitSeconds,
                                                                         Messages& messages) {
    using SteadyClock = std::chrono::steady_clock;
    constexpr double unnoticed = 0.3;
    const double first = std::min(unnoticed, waitSeconds);
    const auto start = SteadyClock::now();
    auto lock = workspace::ProjectLock::Acquire(path, first);
    const std::chrono::duration<double> taken = SteadyClock::now() - start;
    // Anything but another run on the project fails at once, and waiting would not help.
    if (lock || taken.count() < first || first == waitSeconds) {
        return lock;
    }
    messages.Note("waiting for another run on " + path.string());
    return workspace::ProjectLock::Acquire(path, waitSeconds - first);
}

}  // namespace lintara::cli
