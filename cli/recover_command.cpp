// lintara recover: finishes or undoes a save that was interrupted.
#include "cli/commands.h"
#include "cli/messages.h"
#include "cli/project_lock.h"
#include "cli/terminal_text.h"
#include "workspace/save.h"

namespace lintara::cli {

ExitStatus RunRecoverCommand(const Options& options, Streams& streams) {
    Messages messages(streams, false);
    const auto lock = LockProject(options, messages);
    if (!lock) {
        messages.Error(lock.error());
        return ExitStatus::Failed;
    }
    const auto done = workspace::Recover(options.path);
    if (!done) {
        messages.Errors(done.error());
        return ExitStatus::Failed;
    }
    std::string text;
    for (const std::string& line : *done) {
        text += Printable(std::string_view(line)) + "\n";
    }
    streams.out.Write(done->empty() ? "Nothing to recover.\n" : text);
    return ExitStatus::Done;
}

}  // namespace lintara::cli
