#include "cli/reference/command_tree.h"

#include <algorithm>

namespace lintara::cli::reference {
namespace {

template <class Word>
std::string Join(std::span<const Word> words, std::string_view separator) {
    std::string joined;
    for (const Word& word : words) {
        joined += joined.empty() ? "" : separator;
        joined += word;
    }
    return joined;
}

}  // namespace

std::vector<Choice> ChoicesBehind(std::string_view family, std::span<const CommandInfo> commands,
                                  std::span<const CommandFamily> families) {
    std::vector<Choice> choices;
    for (const CommandInfo& command : commands) {
        const std::size_t blank = command.name.find(' ');
        if (!family.empty()) {
            if (blank != std::string_view::npos && command.name.substr(0, blank) == family) {
                choices.push_back({command.name.substr(blank + 1), command.description});
            }
            continue;
        }
        if (blank == std::string_view::npos) {
            choices.push_back({command.name, command.description});
            continue;
        }
        const auto known = std::ranges::find(families, command.name.substr(0, blank), &CommandFamily::name);
        if (known != families.end() &&
            std::ranges::find(choices, known->name, &Choice::word) == choices.end()) {
            choices.push_back({known->name, known->description});
        }
    }
    return choices;
}

ValueKind KindOfValue(const OptionInfo& option) {
    if (option.kind == OptionKind::Flag) {
        return ValueKind::None;
    }
    if (!option.values.empty()) {
        return ValueKind::Words;
    }
    if (option.valueName == "DIR") {
        return ValueKind::Folder;
    }
    return option.isPath || option.valueName == "FILE" ? ValueKind::File : ValueKind::Free;
}

std::vector<std::string> NamesOf(const OptionInfo& option) {
    std::vector<std::string> names = {"--" + std::string(option.name)};
    if (option.shortName != '\0') {
        names.push_back(std::string("-") + option.shortName);
    }
    return names;
}

std::vector<OptionInfo> AllOptionsOf(const CommandInfo& command) {
    std::vector<OptionInfo> options = command.options;
    options.push_back({.name = "help", .description = "Print this help and exit", .shortName = 'h'});
    return options;
}

bool IsPath(const ArgumentInfo& argument) {
    return argument.name == "PATH";
}

std::string Joined(std::span<const std::string> words, std::string_view separator) {
    return Join(words, separator);
}

std::string Joined(std::span<const std::string_view> words, std::string_view separator) {
    return Join(words, separator);
}

std::string Escaped(std::string_view text, std::string_view special) {
    std::string escaped;
    for (const char c : text) {
        if (special.contains(c)) {
            escaped += '\\';
        }
        escaped += c;
    }
    return escaped;
}

std::string WithReplaced(std::string_view text, char sought, std::string_view replacement) {
    std::string result;
    for (const char c : text) {
        if (c == sought) {
            result += replacement;
        } else {
            result += c;
        }
    }
    return result;
}

}  // namespace lintara::cli::reference
