#include "cli/project/locked_run.h"

#include "cli/output/messages.h"
#include "cli/project/project_lock.h"

namespace lintara::cli {

ExitStatus RunLocked(const std::filesystem::path& project, double waitSeconds, Environment& environment,
                     const LockedAction& act) {
    Messages messages(environment.streams, false);
    const auto lock = LockProject(project, waitSeconds, messages);
    if (!lock) {
        messages.Error(lock.error());
        return ExitStatus::Failed;
    }
    const auto done = act();
    if (!done) {
        messages.Errors(done.error());
        return ExitStatus::Failed;
    }
    environment.streams.out.Write(*done);
    return ExitStatus::Done;
}

}  // namespace lintara::cli
