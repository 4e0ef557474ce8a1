// lintara recover: finishes or undoes a save that was interrupted.
#include "cli/commands/commands.h"
#include "cli/environment.h"
#include "cli/help_text.h"
#include "cli/options/shared_options.h"
#include "cli/output/messages.h"
#include "cli/output/terminal_text.h"
#include "cli/project/project_lock.h"
#include "workspace/save.h"

namespace lintara::cli {
namespace {

constexpr std::string_view RecoverFooter =
    "\nExample:\n"
    "  lintara recover Invoicing.vbp\n"
    "      Finish or undo what a run that was interrupted while saving has left. Every command does\n"
    "      this by itself before it reads the project.\n" LINTARA_READING_STATUSES;

ExitStatus Run(const OptionReader& given, Environment& environment) {
    Streams& streams = environment.streams;
    Messages messages(streams, false);
    const std::filesystem::path path = ReadReading(given).path;
    const auto lock = LockProject(path, ReadWait(given), messages);
    if (!lock) {
        messages.Error(lock.error());
        return ExitStatus::Failed;
    }
    const auto done = workspace::Recover(path);
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

}  // namespace

CommandInfo RecoverCommand() {
    return {.name = "recover",
            .description = "Finish or undo a save that was interrupted",
            .footer = RecoverFooter,
            .arguments = {PathArgument()},
            .options = Joined({{WaitOption()}, ProjectFileOptions()}),
            .run = Run};
}

}  // namespace lintara::cli
