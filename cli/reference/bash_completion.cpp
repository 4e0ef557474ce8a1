#include "cli/reference/command_tree.h"
#include "cli/reference/reference.h"

namespace lintara::cli::reference {
namespace {

// The words of the command table hold letters, digits and hyphens; quoted all the same.
std::string Quoted(std::string_view text) {
    return "'" + WithReplaced(text, '\'', "'\\''") + "'";
}

constexpr std::string_view Helpers =
    R"(# Completion of the command lintara in bash. Made from its own table of commands: change that, not this.

_lintara_words() {
    mapfile -t COMPREPLY < <(compgen -W "$1" -- "$cur")
}

_lintara_files() {
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -f -- "$cur")
    # The shell itself knows what "~" is.
    ((${#COMPREPLY[@]})) || compopt -o default 2>/dev/null
}

_lintara_folders() {
    compopt -o filenames 2>/dev/null
    mapfile -t COMPREPLY < <(compgen -d -- "$cur")
}

_lintara() {
    local cur=${COMP_WORDS[COMP_CWORD]} prev=${COMP_WORDS[COMP_CWORD-1]} command='' word i
    COMPREPLY=()
    # "--option=value" comes as three words.
    if [[ $cur == = ]]; then
        cur=''
    elif [[ $prev == = ]]; then
        prev=${COMP_WORDS[COMP_CWORD-2]}
    fi
)";

// The loop that finds the words which make up the command.
std::string FindCommand(const Program& program) {
    std::string families = "''";
    for (const CommandFamily& family : program.families) {
        families += " | " + Quoted(family.name);
    }
    return "    for ((i = 1; i < COMP_CWORD; i++)); do\n"
           "        word=${COMP_WORDS[i]}\n"
           "        case $command in\n"
           "            " +
           families +
           ")\n"
           "                [[ $word == -* ]] || command=${command:+$command }$word ;;\n"
           "        esac\n"
           "    done\n";
}

std::string Words(std::span<const Choice> choices, std::string_view further) {
    std::string words;
    for (const Choice& choice : choices) {
        words += std::string(choice.word) + " ";
    }
    return "_lintara_words " + Quoted(words + std::string(further));
}

std::string Proposal(const OptionInfo& option) {
    switch (KindOfValue(option)) {
        case ValueKind::Words:
            return "_lintara_words " + Quoted(Joined(option.values, " ")) + "; return";
        case ValueKind::File:
            return "_lintara_files; return";
        case ValueKind::Folder:
            return "_lintara_folders; return";
        case ValueKind::None:
        case ValueKind::Free:
            return "return";
    }
    return "return";
}

std::string ArgumentProposal(const CommandInfo& command) {
    if (command.arguments.empty()) {
        return ":";
    }
    const ArgumentInfo& first = command.arguments.front();
    if (!first.values.empty()) {
        return "[[ $prev != " + Quoted(command.name.substr(command.name.rfind(' ') + 1)) +
               " ]] || _lintara_words " + Quoted(Joined(first.values, " "));
    }
    return IsPath(first) ? "_lintara_files" : ":";
}

std::string CaseOf(const CommandInfo& command) {
    std::string text = "        " + Quoted(command.name) + ")\n";
    std::string names;
    std::string values;
    for (const OptionInfo& option : AllOptionsOf(command)) {
        names += (names.empty() ? "" : " ") + Joined(NamesOf(option), " ");
        if (option.kind != OptionKind::Flag) {
            values += "                " + Joined(NamesOf(option), " | ") + ") " + Proposal(option) + " ;;\n";
        }
    }
    if (!values.empty()) {
        text += "            case $prev in\n" + values + "            esac\n";
    }
    return text + "            case $cur in\n                -*) _lintara_words " + Quoted(names) +
           " ;;\n                *) " + ArgumentProposal(command) + " ;;\n            esac ;;\n";
}

}  // namespace

std::string BashCompletion(const Program& program) {
    std::string text = std::string(Helpers) + FindCommand(program) + "    case $command in\n";
    text += "        '') " +
            Words(ChoicesBehind("", program.commands, program.families), "--help --version") + " ;;\n";
    for (const CommandFamily& family : program.families) {
        text += "        " + Quoted(family.name) + ") " +
                Words(ChoicesBehind(family.name, program.commands, program.families), "--help") + " ;;\n";
    }
    for (const CommandInfo& command : program.commands) {
        text += CaseOf(command);
    }
    return text + "    esac\n}\n\ncomplete -F _lintara lintara\n";
}

}  // namespace lintara::cli::reference
