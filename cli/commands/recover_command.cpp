// lintara recover: finishes or undoes a save that was interrupted.
#include "cli/commands/commands.h"
#include "cli/environment.h"
#include "cli/help_text.h"
#include "cli/options/shared_options.h"
#include "cli/output/terminal_text.h"
#include "cli/project/locked_run.h"
#include "workspace/save.h"

namespace lintara::cli {
namespace {

constexpr std::string_view RecoverFooter =
    "\nExample:\n"
    "  lintara recover Invoicing.vbp\n"
    "      Finish or undo what a run that was interrupted while saving has left. Every command does\n"
    "      this by itself before it reads the project.\n" LINTARA_READING_STATUSES;

// What was recovered, as lines for people.
std::expected<std::string, workspace::Diagnostics> Recover(const std::filesystem::path& path) {
    const auto done = workspace::Recover(path);
    if (!done) {
        return std::unexpected(done.error());
    }
    std::string text;
    for (const std::string& line : *done) {
        text += Printable(std::string_view(line)) + "\n";
    }
    return done->empty() ? "Nothing to recover.\n" : text;
}

ExitStatus Run(const OptionReader& given, Environment& environment) {
    const std::filesystem::path path = ReadReading(given).path;
    return RunLocked(path, ReadWait(given), environment, [&] { return Recover(path); });
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
