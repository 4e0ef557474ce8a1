// The command table as completions need it: which words can follow which.
#pragma once

#include "cli/options/command_info.h"

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::cli::reference {

// What can be typed at one place, after "" (the program alone), a family's name or a whole command's name.
struct Choice {
    std::string_view word;  // "insert", or "get" behind a family's name
    std::string_view description;
};

// The commands and families of the program, in their order, when `family` is empty; else those of the family.
[[nodiscard]] std::vector<Choice> ChoicesBehind(std::string_view family,
                                                std::span<const CommandInfo> commands,
                                                std::span<const CommandFamily> families);

enum class ValueKind {
    None,   // a flag
    Words,  // OptionInfo::values
    File,
    Folder,
    Free,  // nothing that could be proposed
};

[[nodiscard]] ValueKind KindOfValue(const OptionInfo& option);

// "--base", and "-o" where there is one.
[[nodiscard]] std::vector<std::string> NamesOf(const OptionInfo& option);

// The options of the command, and --help.
[[nodiscard]] std::vector<OptionInfo> AllOptionsOf(const CommandInfo& command);

// Whether the argument names a file or folder.
[[nodiscard]] bool IsPath(const ArgumentInfo& argument);

[[nodiscard]] std::string Joined(std::span<const std::string> words, std::string_view separator);
[[nodiscard]] std::string Joined(std::span<const std::string_view> words, std::string_view separator);

// The text with each character of `special` behind a backslash.
[[nodiscard]] std::string Escaped(std::string_view text, std::string_view special);

// The text with every `sought` replaced.
[[nodiscard]] std::string WithReplaced(std::string_view text, char sought, std::string_view replacement);

}  // namespace lintara::cli::reference
