#include "cli/commands/commands.h"

#include "cli/help_text.h"

namespace lintara::cli {

namespace {

std::vector<CommandInfo> AllCommands() {
    std::vector<CommandInfo> commands = {
        ListCommand(),
        InsertCommand(),
        RemoveCommand(),
        CustomInsertCommand(),
        CustomRemoveCommand(),
        ReplaceCommand(),
        MemberCommand(),
        CheckCommand(),
        WhereCommand(),
        TemplateExpandCommand(),
        TemplateGenerateCommand(),
        UndoCommand(),
        RecoverCommand(),
        SettingsListCommand(),
        SettingsGetCommand(),
        SettingsSetCommand(),
        SettingsResetCommand(),
        BufferListCommand(),
        BufferGetCommand(),
        BufferSetCommand(),
        BufferClearCommand(),
        BufferPathCommand(),
        BufferInitCommand(),
        BufferImportCommand(),
        ServeCommand(),
        DialogInsertHandlersCommand(),
        DialogRemoveHandlersCommand(),
        DialogInsertCodeCommand(),
        DialogRemoveCodeCommand(),
        HistoryCommand(),
    };
    commands.push_back(ConfigCommand(commands));
    return commands;
}

constexpr CommandFamily families[] = {
    {"custom", "Insert and remove blocks of code of your own"},
    {"template", "Turn code templates into code and back"},
    {"settings", "Show and change the user's settings"},
    {"buffer", "Show and change the copy-and-paste buffers"},
    {"dialog", "Choose in a window what to insert or remove"},
};

}  // namespace

const std::vector<CommandInfo>& Commands() {
    static const std::vector<CommandInfo> commands = AllCommands();
    return commands;
}

std::span<const CommandFamily> CommandFamilies() {
    return families;
}

std::string_view ProgramDescription() {
    return "Line numbers, error handlers and code blocks for classic BASIC projects: in, and out again.";
}

std::string_view ProgramFooter() {
    return "\nPATH is a project (.vbp), a group of projects (.vbg), a folder of exported modules, or one\n"
           "component (.bas, .cls, .frm, .ctl, .pag, .dob, .dsr).\n"
           "\nExamples:\n"
           "  lintara list Invoicing.vbp\n"
           "  lintara insert Invoicing.vbp --error-handlers --line-numbers --diff\n"
           "  lintara insert Invoicing.vbp --error-handlers --line-numbers --output build\n"
           "  lintara remove Invoicing.vbp --line-numbers\n"
           "  lintara undo Invoicing.vbp\n"
           "\n'lintara COMMAND --help' explains one command, with examples.\n" LINTARA_EDITING_STATUSES;
}

}  // namespace lintara::cli
