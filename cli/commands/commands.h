// All commands. Each stands in a file of its own, which makes its entry.
#pragma once

#include "cli/options/command_info.h"

#include <span>
#include <string_view>
#include <vector>

namespace lintara::cli {

// In the order in which the help shows them.
[[nodiscard]] const std::vector<CommandInfo>& Commands();
[[nodiscard]] std::span<const CommandFamily> CommandFamilies();

// The program's own lines in its help.
[[nodiscard]] std::string_view ProgramDescription();
[[nodiscard]] std::string_view ProgramFooter();

[[nodiscard]] CommandInfo BufferClearCommand();
[[nodiscard]] CommandInfo BufferGetCommand();
[[nodiscard]] CommandInfo BufferImportCommand();
[[nodiscard]] CommandInfo BufferInitCommand();
[[nodiscard]] CommandInfo BufferListCommand();
[[nodiscard]] CommandInfo BufferPathCommand();
[[nodiscard]] CommandInfo BufferSetCommand();
[[nodiscard]] CommandInfo CheckCommand();
// `others` are those whose options it shows.
[[nodiscard]] CommandInfo ConfigCommand(std::span<const CommandInfo> others);
[[nodiscard]] CommandInfo CustomInsertCommand();
[[nodiscard]] CommandInfo CustomRemoveCommand();
[[nodiscard]] CommandInfo DialogInsertCodeCommand();
[[nodiscard]] CommandInfo DialogInsertHandlersCommand();
[[nodiscard]] CommandInfo DialogRemoveCodeCommand();
[[nodiscard]] CommandInfo DialogRemoveHandlersCommand();
[[nodiscard]] CommandInfo HistoryCommand();
[[nodiscard]] CommandInfo InsertCommand();
[[nodiscard]] CommandInfo ListCommand();
[[nodiscard]] CommandInfo MemberCommand();
[[nodiscard]] CommandInfo RecoverCommand();
[[nodiscard]] CommandInfo RemoveCommand();
[[nodiscard]] CommandInfo ReplaceCommand();
[[nodiscard]] CommandInfo ServeCommand();
[[nodiscard]] CommandInfo SettingsGetCommand();
[[nodiscard]] CommandInfo SettingsListCommand();
[[nodiscard]] CommandInfo SettingsSetCommand();
[[nodiscard]] CommandInfo SettingsResetCommand();
[[nodiscard]] CommandInfo TemplateExpandCommand();
[[nodiscard]] CommandInfo TemplateGenerateCommand();
[[nodiscard]] CommandInfo UndoCommand();
[[nodiscard]] CommandInfo WhereCommand();

}  // namespace lintara::cli
