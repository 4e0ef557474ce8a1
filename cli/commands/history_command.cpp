// lintara history: where the user has been in a project, and back there.
#include "cli/commands/commands.h"
#include "cli/history/history_run.h"
#include "cli/options/shared_options.h"

namespace lintara::cli {
namespace {

constexpr std::string_view HistoryFooter =
    "\nExamples:\n"
    "  lintara history Invoicing.vbp\n"
    "      Show the places in a window, and print the chosen one as file:line.\n"
    "  place=$(lintara history Invoicing.vbp) && $EDITOR \"$place\"\n"
    "      Jump there with an editor that takes file:line.\n"
    "  lintara history Invoicing.vbp --print\n"
    "      Print the places as JSON, and show no window.\n"
    "\nCommands record the places that --at points them at, and the line that 'lintara where' finds: the\n"
    "last ten of each project. As in a browser, choosing a place under Back moves the later ones to Next,\n"
    "and a new place clears Next. A place is found again where its line has moved to; places of\n"
    "components that are gone are dropped.\n"
    "\nThe window is shown by the program lintara-window, which LINTARA_WINDOW may name.\n"
    "\nExit status:\n"
    "  0  done\n"
    "  1  the window was closed without a choice, or there is nothing to choose from\n"
    "  2  wrong usage\n"
    "  3  the project or the history could not be read, or the window could not be shown\n";

}  // namespace

CommandInfo HistoryCommand() {
    const OptionInfo print{
        .name = "print", .description = "Show no window; print the places, as JSON", .group = "Output"};
    return {.name = "history",
            .description = "Go back to a place in the code where you have been",
            .footer = HistoryFooter,
            .arguments = {PathArgument()},
            .options = Joined({ReadingOptions(), {print}}),
            .run = RunHistory};
}

}  // namespace lintara::cli
