#include "cli/reference/command_tree.h"
#include "cli/reference/reference.h"

namespace lintara::cli::reference {
namespace {

std::string Quoted(std::string_view text) {
    return "'" + WithReplaced(text, '\'', "'\\''") + "'";
}

// A text between brackets, or between colons, of an entry.
std::string Plain(std::string_view text) {
    return Escaped(text, "\\[]:");
}

std::string FunctionName(std::string_view command) {
    return "_lintara_" + WithReplaced(WithReplaced(command, ' ', "_"), '-', "_");
}

std::string Action(const OptionInfo& option) {
    switch (KindOfValue(option)) {
        case ValueKind::Words:
            return "(" + Joined(option.values, " ") + ")";
        case ValueKind::File:
            return "_files";
        case ValueKind::Folder:
            return "_files -/";
        case ValueKind::None:
        case ValueKind::Free:
            return " ";
    }
    return " ";
}

// One line for each of the option's names, so that a value may follow with "=" or as a word of its own.
std::string EntriesOf(const OptionInfo& option) {
    const std::vector<std::string> names = NamesOf(option);
    std::string lines;
    for (const std::string& name : names) {
        std::string entry = option.kind == OptionKind::Texts ? "*" : "(" + Joined(names, " ") + ")";
        entry += name;
        if (option.kind != OptionKind::Flag) {
            entry += name.starts_with("--") ? "=" : "";
        }
        entry += "[" + Plain(option.description) + "]";
        if (option.kind != OptionKind::Flag) {
            entry += ":" + Plain(option.valueName) + ":" + Action(option);
        }
        lines += " \\\n        " + Quoted(entry);
    }
    return lines;
}

std::string EntryOf(const ArgumentInfo& argument) {
    std::string entry = argument.required ? ":" : "::";
    entry += Plain(argument.name) + ":";
    if (!argument.values.empty()) {
        entry += "(" + Joined(argument.values, " ") + ")";
    } else {
        entry += IsPath(argument) ? "_files" : " ";
    }
    return " \\\n        " + Quoted(entry);
}

std::string CommandFunction(const CommandInfo& command) {
    std::string text = FunctionName(command.name) + "() {\n    _arguments -s -S";
    for (const OptionInfo& option : AllOptionsOf(command)) {
        text += EntriesOf(option);
    }
    for (const ArgumentInfo& argument : command.arguments) {
        text += EntryOf(argument);
    }
    return text + "\n}\n\n";
}

// Of the program, or of a family: a choice of words, then the function of the word that was chosen.
std::string ChoosingFunction(std::string_view name, std::string_view prefix,
                             std::span<const Choice> choices) {
    std::string text = std::string(name) +
                       "() {\n"
                       "    local curcontext=$curcontext state line\n"
                       "    local -a commands\n"
                       "    commands=(\n";
    for (const Choice& choice : choices) {
        text +=
            "        " + Quoted(Escaped(choice.word, "\\:") + ":" + std::string(choice.description)) + "\n";
    }
    text +=
        "    )\n"
        "    _arguments -C '(-h --help)'{-h,--help}'[Print this help and exit]'";
    text += prefix.empty() ? " '--version[Print the version and exit]'" : "";
    text +=
        " \\\n"
        "        '1:command:->command' '*::argument:->argument'\n"
        "    case $state in\n"
        "        command) _describe -t commands command commands ;;\n"
        "        argument)\n"
        "            case $words[1] in\n";
    for (const Choice& choice : choices) {
        text += "                " + std::string(choice.word) + ") " +
                FunctionName(std::string(prefix) + std::string(choice.word)) + " ;;\n";
    }
    return text + "            esac ;;\n    esac\n}\n\n";
}

}  // namespace

std::string ZshCompletion(const Program& program) {
    std::string text =
        "#compdef lintara\n"
        "# Completion of the command lintara in zsh. Made from its own table of commands: change that, not "
        "this.\n\n";
    for (const CommandInfo& command : program.commands) {
        text += CommandFunction(command);
    }
    for (const CommandFamily& family : program.families) {
        const std::string prefix = std::string(family.name) + " ";
        text += ChoosingFunction(FunctionName(family.name), prefix,
                                 ChoicesBehind(family.name, program.commands, program.families));
    }
    text += ChoosingFunction("_lintara", "", ChoicesBehind("", program.commands, program.families));
    return text + "_lintara \"$@\"\n";
}

}  // namespace lintara::cli::reference
