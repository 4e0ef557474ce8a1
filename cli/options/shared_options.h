// The options that several commands share: their entries for a command's table, and how they are read.
// Reading throws UsageError for what contradicts or says nothing.
#pragma once

#include "cli/options.h"
#include "cli/options/command_info.h"
#include "cli/options/option_reader.h"

#include <filesystem>
#include <initializer_list>
#include <vector>

namespace lintara::cli {

// The lists, one behind the other.
[[nodiscard]] std::vector<OptionInfo> Joined(std::initializer_list<std::vector<OptionInfo>> lists);

// The project to work on, as the first argument.
[[nodiscard]] ArgumentInfo PathArgument();

// --config, --no-config: of every command that reads a project. What they name is laid below the command line
// before the command runs (cli/options/layers.h).
[[nodiscard]] std::vector<OptionInfo> ProjectFileOptions();

// --code-page, --recursive, --skip-missing, and those of the project file
[[nodiscard]] std::vector<OptionInfo> ReadingOptions();
[[nodiscard]] ReadOptions ReadReading(const OptionReader& given);

// --keep-going, --stdin-filename: of commands that work through whole projects. ReadReading reads them, too.
[[nodiscard]] std::vector<OptionInfo> ProjectReadingOptions();

// --scope, --component, --procedure, --at, --exclude
[[nodiscard]] std::vector<OptionInfo> ScopeOptionInfos();
[[nodiscard]] ScopeOptions ReadScope(const OptionReader& given);

// --check, --diff, --list, --output, --backup, --allow-outside, --wait
[[nodiscard]] std::vector<OptionInfo> SavingOptions();
// --allow-outside alone, for other commands that write files in place. Each is a folder that is there.
[[nodiscard]] OptionInfo AllowOutsideOption();
[[nodiscard]] std::vector<std::filesystem::path> ReadAllowedOutside(const OptionReader& given);
// --wait alone, for other commands that take the project's lock.
[[nodiscard]] OptionInfo WaitOption();
[[nodiscard]] double ReadWait(const OptionReader& given);
// --strict, --exact
[[nodiscard]] std::vector<OptionInfo> SafetyOptions();
[[nodiscard]] EditOptions ReadEditing(const OptionReader& given);

// --json, --quiet
[[nodiscard]] std::vector<OptionInfo> ReportOptions();
[[nodiscard]] OptionInfo JsonOption();
[[nodiscard]] OutputOptions ReadOutput(const OptionReader& given);

// All of the above, in their order.
[[nodiscard]] std::vector<OptionInfo> EditCommandOptionInfos();
[[nodiscard]] EditCommandOptions ReadEditCommand(const OptionReader& given);

// --error-handlers, --line-numbers; `verb` begins their descriptions: "Insert".
[[nodiscard]] std::vector<OptionInfo> WorkOptionInfos(std::string_view group);
// What the command line asks for wins over what a project file asks for. Neither is an error.
[[nodiscard]] WorkOptions ReadWork(const OptionReader& given);

// --base, --step, --numbering
[[nodiscard]] std::vector<OptionInfo> NumberOptionInfos(std::string_view group);
// Numbers that removal could not take off are refused, unless the command is exact.
[[nodiscard]] NumberOptions ReadNumbers(const OptionReader& given);

// --label, --template
[[nodiscard]] OptionInfo LabelOption(std::string_view group);
[[nodiscard]] OptionInfo TemplateOption(std::string_view group);
[[nodiscard]] Text ReadLabel(const OptionReader& given);
[[nodiscard]] TextSource ReadTemplate(const OptionReader& given);

}  // namespace lintara::cli
