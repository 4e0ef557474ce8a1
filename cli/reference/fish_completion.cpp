#include "cli/reference/command_tree.h"
#include "cli/reference/reference.h"

namespace lintara::cli::reference {
namespace {

std::string Quoted(std::string_view text) {
    return "'" + Escaped(text, "\\'") + "'";
}

std::string FindCommand(const Program& program) {
    std::string families;
    for (const CommandFamily& family : program.families) {
        families += " " + Quoted(family.name);
    }
    return "# Completion of the command lintara in fish. Made from its own table of commands: change that, "
           "not "
           "this.\n\n"
           "# Whether the words so far name that command, and no other.\n"
           "function __lintara_is\n"
           "    set -l found\n"
           "    for word in (commandline -opc)[2..-1]\n"
           "        string match -q -- '-*' $word; and continue\n"
           "        if test -z \"$found\"\n"
           "            set found $word\n"
           "        else if contains -- \"$found\"" +
           families +
           "\n"
           "            set found \"$found $word\"\n"
           "        end\n"
           "    end\n"
           "    test \"$found\" = \"$argv[1]\"\n"
           "end\n\n"
           "complete -c lintara -f\n"
           "complete -c lintara -s h -l help -d 'Print this help and exit'\n"
           "complete -c lintara -n \"__lintara_is ''\" -l version -d 'Print the version and exit'\n";
}

std::string Begin(std::string_view command) {
    return "complete -c lintara -n \"__lintara_is " + Quoted(command) + "\"";
}

std::string ChoiceLines(std::string_view family, std::span<const Choice> choices) {
    std::string lines;
    for (const Choice& choice : choices) {
        lines += Begin(family) + " -a " + Quoted(choice.word) + " -d " + Quoted(choice.description) + "\n";
    }
    return lines;
}

std::string ValueWords(const OptionInfo& option) {
    switch (KindOfValue(option)) {
        case ValueKind::Words:
            return " -x -a " + Quoted(Joined(option.values, " "));
        case ValueKind::File:
            return " -r -F";
        case ValueKind::Folder:
            return " -x -a '(__fish_complete_directories)'";
        case ValueKind::Free:
            return " -x";
        case ValueKind::None:
            return "";
    }
    return "";
}

std::string OptionLine(const CommandInfo& command, const OptionInfo& option) {
    std::string line = Begin(command.name) + " -l " + std::string(option.name);
    if (option.shortName != '\0') {
        line += std::string(" -s ") + option.shortName;
    }
    return line + ValueWords(option) + " -d " + Quoted(option.description) + "\n";
}

std::string CommandLines(const CommandInfo& command) {
    std::string lines;
    if (!command.arguments.empty()) {
        const ArgumentInfo& first = command.arguments.front();
        if (!first.values.empty()) {
            lines += Begin(command.name) + " -a " + Quoted(Joined(first.values, " ")) + "\n";
        } else if (IsPath(first)) {
            lines += Begin(command.name) + " -F\n";
        }
    }
    for (const OptionInfo& option : command.options) {
        lines += OptionLine(command, option);
    }
    return lines;
}

}  // namespace

std::string FishCompletion(const Program& program) {
    std::string text = FindCommand(program);
    text += ChoiceLines("", ChoicesBehind("", program.commands, program.families));
    for (const CommandFamily& family : program.families) {
        text += ChoiceLines(family.name, ChoicesBehind(family.name, program.commands, program.families));
    }
    for (const CommandInfo& command : program.commands) {
        text += CommandLines(command);
    }
    return text;
}

}  // namespace lintara::cli::reference
