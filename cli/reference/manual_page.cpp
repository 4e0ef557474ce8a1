#include "base/utf8.h"
#include "cli/options/project_file.h"
#include "cli/reference/command_tree.h"
#include "cli/reference/reference.h"

#include <array>
#include <cstdio>

namespace lintara::cli::reference {
namespace {

// One character of a text as the formatter must be told it to show just that.
std::string Character(char32_t character) {
    switch (character) {
        case U'\\':
            return "\\e";
        case U'-':
            return "\\-";
        case U'\'':
            return "\\(aq";
        case U'"':
            return "\\(dq";
        case U'`':
            return "\\(ga";
        case U'^':
            return "\\(ha";
        case U'~':
            return "\\(ti";
        default:
            break;
    }
    if (character >= 0x80) {
        std::array<char, 16> name{};
        std::snprintf(name.data(), name.size(), "\\[u%04X]", static_cast<unsigned>(character));
        return name.data();
    }
    return std::string(1, static_cast<char>(character));
}

// A line of text. What begins with a dot or an apostrophe would be a request.
std::string Line(std::string_view text) {
    const Text whole = FromUtf8(text);
    std::string line = text.starts_with('.') ? "\\&" : "";
    for (std::size_t at = 0; at < whole.size();) {
        line += Character(TakeCharacter(whole, at));
    }
    return line;
}

std::string Bold(std::string_view text) {
    return "\\fB" + Line(text) + "\\fR";
}

std::string Italic(std::string_view text) {
    return "\\fI" + Line(text) + "\\fR";
}

// An argument of a macro, of any number of words.
std::string Argument(std::string_view text) {
    return "\"" + Line(text) + "\"";
}

// Lines as they are, with their indentation.
std::string Verbatim(std::string_view text) {
    std::string lines = ".PP\n.nf\n";
    while (!text.empty()) {
        const std::size_t end = std::min(text.find('\n'), text.size());
        lines += Line(text.substr(0, end)) + "\n";
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    return lines + ".fi\n";
}

std::string WithoutOuterBreaks(std::string_view text) {
    const std::size_t begin = std::min(text.find_first_not_of('\n'), text.size());
    text.remove_prefix(begin);
    return std::string(text.substr(0, text.find_last_not_of('\n') + 1));
}

std::string Footer(std::string_view footer) {
    const std::string text = WithoutOuterBreaks(footer);
    return text.empty() ? "" : Verbatim(text);
}

std::string Synopsis(const CommandInfo& command) {
    std::string text = Bold("lintara " + std::string(command.name));
    if (!command.options.empty()) {
        text += " [" + Italic("OPTION") + "...]";
    }
    for (const ArgumentInfo& argument : command.arguments) {
        text += " ";
        text += argument.required ? Italic(argument.name) : "[" + Italic(argument.name) + "]";
    }
    return text + "\n";
}

std::string Entry(const std::string& tag, std::string_view description) {
    return ".TP\n" + tag + "\n" + Line(description) + "\n";
}

std::string OptionEntry(const OptionInfo& option) {
    std::string tag;
    for (const std::string& name : NamesOf(option)) {
        tag += (tag.empty() ? "" : ", ") + Bold(name);
    }
    if (option.kind != OptionKind::Flag) {
        tag += " " + Italic(option.valueName);
    }
    std::string description(option.description);
    if (option.required) {
        description += "; must be given";
    }
    return Entry(tag, description);
}

std::string CommandSection(const CommandInfo& command) {
    std::string text = ".SS " + Argument("lintara " + std::string(command.name)) + "\n" +
                       Line(std::string(command.description) + ".") + "\n.PP\n" + Synopsis(command);
    for (const ArgumentInfo& argument : command.arguments) {
        text += Entry(Italic(argument.name), argument.description);
    }
    std::string_view group;
    for (const OptionInfo& option : command.options) {
        if (option.group != group) {
            group = option.group;
            text += ".PP\n" + Line(std::string(group) + ":") + "\n";
        }
        text += OptionEntry(option);
    }
    return text + Footer(command.footer);
}

std::string Files() {
    return ".SH FILES\n" +
           Entry(Italic(projectFileName),
                 "Options for a project, beside it or in a folder above it; see lintara config.") +
           Entry(Italic("$XDG_CONFIG_HOME/Tarnwick/settings.toml"),
                 "The user's settings, below ~/.config when the variable is not set; see lintara settings.");
}

std::string Environment() {
    return ".SH ENVIRONMENT\n" + Entry(Bold("NO_COLOR"), "When set, differences are shown without colors.") +
           Entry(Bold("XDG_CONFIG_HOME"), "The folder that holds the user's settings.") +
           Entry(Bold("LC_ALL") + ", " + Bold("LC_TIME") + ", " + Bold("LANG"),
                 "How date and time are written into code.");
}

}  // namespace

std::string ManualPage(const Program& program) {
    std::string text =
        ".\\\" Made from the command table of lintara: change that, not this.\n"
        ".TH LINTARA 1 \"\" " +
        Argument("lintara " + std::string(program.version)) +
        " \"User Commands\"\n"
        ".ad l\n"
        ".nh\n"
        ".SH NAME\n"
        "lintara \\- " +
        Line(program.description.substr(0, program.description.find_last_not_of('.') + 1)) +
        "\n.SH SYNOPSIS\n";
    for (const CommandInfo& command : program.commands) {
        text += Synopsis(command) + ".br\n";
    }
    text += Bold("lintara --help") + " | " + Bold("--version") + "\n.SH DESCRIPTION\n" +
            Footer(program.footer) + ".SH COMMANDS\nEvery command takes " + Bold("--help") + ".\n";
    for (const CommandInfo& command : program.commands) {
        text += CommandSection(command);
    }
    return text + Files() + Environment();
}

}  // namespace lintara::cli::reference
