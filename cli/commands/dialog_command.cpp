// lintara dialog: the windows in which the user chooses what an edit does, and the edit.
#include "cli/commands/commands.h"
#include "cli/dialog/dialog_run.h"
#include "cli/edits/insertion.h"
#include "cli/help_text.h"
#include "cli/options/shared_options.h"
#include "cli/project/caret.h"

#include <algorithm>
#include <iterator>

namespace lintara::cli {
namespace {

#define LINTARA_DIALOG_COURSE                                                                                \
    "\nThe caret says what can be chosen: in the declarations there is no current procedure. The dialog\n"   \
    "begins with what was chosen last. 'Begin' keeps that in the user's settings and does the work, just\n"  \
    "as the command that is named below would: with its checks, its report, and 'lintara undo'. The files\n" \
    "are locked and read again for that, so other programs may work on them while the dialog is open.\n"

#define LINTARA_DIALOG_BUFFER                                                                             \
    "\nWhat Ctrl+Shift+C puts into the copy-and-paste buffer stays there: in the next dialog for error\n" \
    "handlers, Ctrl+Shift+V puts it into the code.\n"

#define LINTARA_DIALOG_STATUSES                                                                         \
    "\nThe window is shown by the program lintara-window, which LINTARA_WINDOW may name. Where there\n" \
    "is no display, the message names a command line that does the same without one.\n"                 \
    "\nExit status:\n"                                                                                  \
    "  0  done\n"                                                                                       \
    "  1  cancelled, and nothing was changed; or --check found changes\n"                               \
    "  2  wrong usage, a name that the project does not have, or a choice that cannot be done\n"        \
    "  3  the project could not be read or written, or the window could not be shown; nothing was\n"    \
    "     changed\n"                                                                                    \
    "  4  some procedures were skipped and --strict was given; the others were "                        \
    "edited\n" LINTARA_FAULT_STATUS

constexpr std::string_view InsertHandlersFooter =
    "\nExamples:\n"
    "  lintara dialog insert-eh Invoicing.vbp --at Totals:42\n"
    "      Ask where error handlers and line numbers are to go, and insert them.\n"
    "  lintara dialog insert-eh Invoicing.vbp --at Totals:42 --diff\n"
    "      Ask, and show what would change.\n"
    "  lintara dialog insert-eh Invoicing.vbp --at Totals:42 --print\n"
    "      Ask, and print the label, the template, the numbers and the scope as JSON.\n" LINTARA_DIALOG_COURSE
        LINTARA_DIALOG_BUFFER
    "\nThe same without a window: lintara insert --error-handlers --line-numbers\n" LINTARA_DIALOG_STATUSES;

constexpr std::string_view RemoveHandlersFooter =
    "\nExample:\n"
    "  lintara dialog remove-eh Invoicing.vbp --at Totals:42\n"
    "      Ask where error handlers and line numbers are to go away, and remove them.\n" LINTARA_DIALOG_COURSE
    "\nThe same without a window: lintara remove --error-handlers --line-numbers\n" LINTARA_DIALOG_STATUSES;

constexpr std::string_view InsertCodeFooter =
    "\nExample:\n"
    "  lintara dialog insert-code Invoicing.vbp --at Totals:42\n"
    "      Ask for a piece of code, its number and its place, and insert it.\n" LINTARA_DIALOG_COURSE
        LINTARA_DIALOG_BUFFER "\nThe same without a window: lintara custom insert\n" LINTARA_DIALOG_STATUSES;

constexpr std::string_view RemoveCodeFooter =
    "\nExample:\n"
    "  lintara dialog remove-code Invoicing.vbp --at Totals:42\n"
    "      Ask for the number of a block of code, and remove it.\n" LINTARA_DIALOG_COURSE
    "\nThe same without a window: lintara custom remove\n" LINTARA_DIALOG_STATUSES;

// What the dialog decides, and what has no caret.
constexpr std::string_view notForDialogs[] = {"scope", "component",      "procedure",
                                              "at",    "stdin-filename", "keep-going"};
// What the dialog does not ask about.
constexpr std::string_view beyondTheDialog[] = {"renumber", "refresh"};

std::vector<OptionInfo> SharedOptions() {
    std::vector<OptionInfo> options = EditCommandOptionInfos();
    std::erase_if(options, [](const OptionInfo& option) {
        return std::ranges::find(notForDialogs, option.name) != std::end(notForDialogs);
    });
    const OptionInfo print{
        .name = "print", .description = "Edit nothing; print what was chosen, as JSON", .group = "Output"};
    return Joined({{CaretOption()}, options, {print}});
}

std::vector<OptionInfo> InsertionExtras() {
    std::vector<OptionInfo> options = InsertionOptionInfos("What the dialog does not ask");
    std::erase_if(options, [](const OptionInfo& option) {
        return std::ranges::find(beyondTheDialog, option.name) == std::end(beyondTheDialog);
    });
    return options;
}

template <const DialogKind& (*kind)()>
ExitStatus Run(const OptionReader& given, Environment& environment) {
    return RunDialog(kind(), given, environment);
}

}  // namespace

CommandInfo DialogInsertCodeCommand() {
    return {.name = "dialog insert-code",
            .description = "Ask for a block of code in a window, and insert it",
            .footer = InsertCodeFooter,
            .arguments = {PathArgument()},
            .options = SharedOptions(),
            .run = Run<InsertCodeDialog>};
}

CommandInfo DialogInsertHandlersCommand() {
    return {.name = "dialog insert-eh",
            .description = "Ask about error handlers and line numbers in a window, and insert them",
            .footer = InsertHandlersFooter,
            .arguments = {PathArgument()},
            .options = Joined({SharedOptions(), InsertionExtras()}),
            .run = Run<InsertHandlersDialog>};
}

CommandInfo DialogRemoveCodeCommand() {
    return {.name = "dialog remove-code",
            .description = "Ask for a block of code in a window, and remove it",
            .footer = RemoveCodeFooter,
            .arguments = {PathArgument()},
            .options = SharedOptions(),
            .run = Run<RemoveCodeDialog>};
}

CommandInfo DialogRemoveHandlersCommand() {
    return {.name = "dialog remove-eh",
            .description = "Ask about error handlers and line numbers in a window, and remove them",
            .footer = RemoveHandlersFooter,
            .arguments = {PathArgument()},
            .options = SharedOptions(),
            .run = Run<RemoveHandlersDialog>};
}

}  // namespace lintara::cli
