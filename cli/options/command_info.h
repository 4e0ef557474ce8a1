// A command and its options as data: what the parser accepts, what the help, the completions and the manual
// page show, and what a project file may give.
#pragma once

#include "base/text.h"
#include "cli/exit_status.h"

#include <span>
#include <string_view>
#include <vector>

namespace lintara::cli {

struct Environment;
class OptionReader;

enum class OptionKind {
    Flag,   // --name, or --name=false
    Text,   // --name VALUE, once
    Texts,  // --name VALUE, as often as wanted
};

struct OptionInfo {
    std::string_view name;  // without its dashes
    OptionKind kind = OptionKind::Flag;
    std::string_view valueName = {};  // "N"
    std::string_view description;
    std::string_view group = {};  // the heading under which the help shows it
    char shortName = '\0';
    bool required = false;
    bool inProjectFile = false;  // .lintara.toml may give it
    bool isPath = false;         // in a project file, relative to that file's folder
    bool mayBeEmpty = false;
    std::span<const std::string_view> values = {};  // when it takes these alone
    std::string_view absent = {};                   // what an option that is not given counts as, if anything
    TextView setting = {};                          // the key of the user's setting that stands in for it
};

// An option that takes one value.
[[nodiscard]] OptionInfo ValueOption(std::string_view name, std::string_view valueName,
                                     std::string_view description, std::string_view group);

struct ArgumentInfo {
    std::string_view name;  // "PATH"
    std::string_view description;
    bool required = true;
    bool mayBeEmpty = false;
    std::span<const std::string_view> values = {};  // what completions offer
};

struct CommandInfo {
    std::string_view name;  // "insert", or "custom insert" for a command of a family
    std::string_view description;
    std::string_view footer;  // examples and exit statuses, for the help
    std::vector<ArgumentInfo> arguments;
    std::vector<OptionInfo> options;
    // Does the work and returns the exit status. Throws UsageError.
    ExitStatus (*run)(const OptionReader& given, Environment& environment) = nullptr;

    // Null when there is none.
    [[nodiscard]] const OptionInfo* Option(std::string_view optionName) const;
};

// Commands whose names begin with the same word.
struct CommandFamily {
    std::string_view name;  // "custom"
    std::string_view description;
};

}  // namespace lintara::cli
