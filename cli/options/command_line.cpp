#include "cli/options/command_line.h"

#include "cli/commands/commands.h"
#include "cli/output/terminal_text.h"
#include "cli/scope/near_names.h"
#include "workspace/encoding.h"

#include <algorithm>
#include <optional>

#include <CLI/CLI.hpp>

namespace lintara::cli {
namespace {

// A command in the parser.
struct ParsedCommand {
    const CommandInfo* info;
    CLI::App* app;
};

std::string FlagName(const OptionInfo& option) {
    std::string name = "--" + std::string(option.name);
    if (option.shortName != '\0') {
        name += std::string(",-") + option.shortName;
    }
    return name;
}

void AddOption(CLI::App& app, const OptionInfo& info) {
    const std::string description(info.description);
    CLI::Option* option = info.kind == OptionKind::Flag ? app.add_flag(FlagName(info), description)
                                                        : app.add_option(FlagName(info), description);
    if (info.kind != OptionKind::Flag) {
        option->type_name(std::string(info.valueName));
    }
    if (info.kind == OptionKind::Texts) {
        option->multi_option_policy(CLI::MultiOptionPolicy::TakeAll)->allow_extra_args(false);
    }
    option->required(info.required);
    if (!info.group.empty()) {
        option->group(std::string(info.group));
    }
}

// The parser's entry for the family of a command, or the program itself.
CLI::App& FamilyOf(const CommandInfo& command, CLI::App& program) {
    const std::size_t blank = command.name.find(' ');
    if (blank == std::string_view::npos) {
        return program;
    }
    const std::string_view name = command.name.substr(0, blank);
    for (CLI::App* known : program.get_subcommands({})) {
        if (known->get_name() == name) {
            return *known;
        }
    }
    for (const CommandFamily& family : CommandFamilies()) {
        if (family.name == name) {
            CLI::App& app = *program.add_subcommand(std::string(name), std::string(family.description));
            app.require_subcommand(1);
            app.footer("\n'lintara " + std::string(name) +
                       " COMMAND --help' explains one command, with examples.\n");
            return app;
        }
    }
    return program;
}

CLI::App& AddCommand(const CommandInfo& command, CLI::App& program) {
    const std::string name(command.name.substr(command.name.rfind(' ') + 1));
    CLI::App& app = *FamilyOf(command, program).add_subcommand(name, std::string(command.description));
    app.footer(std::string(command.footer));
    for (const ArgumentInfo& argument : command.arguments) {
        const std::string description(argument.description);
        app.add_option(std::string(argument.name), description)->required(argument.required)->type_name("");
    }
    for (const OptionInfo& option : command.options) {
        AddOption(app, option);
    }
    return app;
}

void DescribeProgram(CLI::App& program) {
    program.name("lintara");
    program.footer(std::string(ProgramFooter()));
    program.require_subcommand(1);
    program.set_help_flag("-h,--help", "Print this help and exit");
    // For the help; it is answered before the rest is parsed.
    const std::string description = "Print the version and exit";
    program.add_flag("--version", description);
}

std::string NameOf(const CLI::Option& option) {
    return option.get_lnames().empty() ? option.get_name() : option.get_lnames().front();
}

// Whether "" says something.
bool MayBeEmpty(const CommandInfo& command, const CLI::Option& option) {
    if (option.get_positional()) {
        const auto found = std::ranges::find(command.arguments, option.get_name(), &ArgumentInfo::name);
        return found != command.arguments.end() && found->mayBeEmpty;
    }
    const OptionInfo* info = command.Option(NameOf(option));
    return info != nullptr && info->mayBeEmpty;
}

// The parser takes any word for a flag's value.
void RequireTruthValue(const CommandInfo& command, const CLI::Option& option) {
    const OptionInfo* info = command.Option(NameOf(option));
    if (option.get_positional() || info == nullptr || info->kind != OptionKind::Flag) {
        return;
    }
    for (const std::string& value : option.results()) {
        Require(value == "true" || value == "false",
                option.get_name() + ": '" + value + "' is neither true nor false");
    }
}

// The parser takes "--check=" for "--check".
void RequireNoEmptyFlag(const CommandInfo& command, std::span<const std::string> arguments) {
    for (const std::string& word : arguments) {
        if (word == "--") {
            return;
        }
        if (word.starts_with("--") && word.ends_with('=')) {
            const OptionInfo* info = command.Option(std::string_view(word).substr(2, word.size() - 3));
            Require(info == nullptr || info->kind != OptionKind::Flag,
                    word.substr(0, word.size() - 1) + ": the value is empty");
        }
    }
}

OptionReader Collect(const ParsedCommand& command, std::span<const std::string> words) {
    RequireNoEmptyFlag(*command.info, words);
    GivenOptions given;
    std::vector<std::string> arguments;
    for (const CLI::Option* option : command.app->get_options()) {
        if (option->count() == 0) {
            continue;
        }
        Require(MayBeEmpty(*command.info, *option) ||
                    std::ranges::find(option->results(), "") == option->results().end(),
                option->get_name() + ": the value is empty");
        RequireTruthValue(*command.info, *option);
        if (option->get_positional()) {
            arguments.push_back(option->results().front());
        } else {
            given.Add(NameOf(*option), {.texts = option->results(), .origin = OptionOrigin::CommandLine});
        }
    }
    return {*command.info, std::move(given), std::move(arguments)};
}

// The parser leaves two blank lines between the groups of options; one is enough.
std::string HelpOf(const CLI::App& program) {
    std::string help;
    for (const char c : program.help()) {
        if (c != '\n' || !help.ends_with("\n\n")) {
            help += c;
        }
    }
    return help;
}

std::string Complaint(const std::string& command, const std::string& what) {
    return command + ": " + Printable(std::string_view(what)) + "\nTry '" + command + " --help'.\n";
}

// "lintara custom insert"
std::string CommandName(const CLI::App& program) {
    std::string name = "lintara";
    for (const CLI::App* app = &program; !app->get_subcommands().empty();) {
        app = app->get_subcommands().front();
        name += " " + app->get_name();
    }
    return name;
}

// About the first word that is no command where one is due.
std::optional<std::string> UnknownCommand(const CLI::App& program, std::span<const std::string> arguments) {
    const CLI::App* app = &program;
    for (const std::string& word : arguments) {
        const auto known = app->get_subcommands([](const CLI::App*) { return true; });
        if (known.empty() || word.starts_with('-')) {
            return std::nullopt;
        }
        const auto found =
            std::ranges::find(known, word, [](const CLI::App* next) { return next->get_name(); });
        if (found == known.end()) {
            std::vector<Text> names;
            for (const CLI::App* next : known) {
                names.push_back(workspace::FromUtf8(next->get_name()));
            }
            return "there is no command '" + word + "'." + Suggestion(workspace::FromUtf8(word), names);
        }
        app = *found;
    }
    return std::nullopt;
}

// About the first option that the command does not have, among the words that the parser left.
std::optional<std::string> UnknownOption(const CLI::App& program) {
    const CLI::App* app = &program;
    while (!app->get_subcommands().empty()) {
        app = app->get_subcommands().front();
    }
    const std::vector<std::string> left = app->remaining();
    const auto word = std::ranges::find_if(
        left, [](const std::string& text) { return text.size() > 1 && text.starts_with('-'); });
    if (word == left.end()) {
        return std::nullopt;
    }
    std::vector<Text> names;
    for (const CLI::Option* option : app->get_options()) {
        for (const std::string& name : option->get_lnames()) {
            names.push_back(workspace::FromUtf8("--" + name));
        }
    }
    const std::string name = word->substr(0, word->find('='));
    return "there is no option '" + name + "'." + Suggestion(workspace::FromUtf8(name), names);
}

}  // namespace

std::string Complaint(const CommandInfo& command, const std::string& what) {
    return Complaint("lintara " + std::string(command.name), what);
}

std::expected<OptionReader, EarlyExit> ParseCommandLine(std::span<const std::string> arguments) {
    // Answered ahead of everything else: editors and build scripts ask for it on every start.
    if (!arguments.empty() && arguments[0] == "--version") {
        return std::unexpected(EarlyExit{ExitStatus::Done, "lintara " LINTARA_VERSION "\n", {}});
    }
    const std::vector<CommandInfo>& commands = Commands();
    CLI::App program{std::string(ProgramDescription())};
    DescribeProgram(program);
    std::vector<ParsedCommand> parsed;
    for (const CommandInfo& command : commands) {
        parsed.push_back({&command, &AddCommand(command, program)});
    }
    if (arguments.empty()) {
        return std::unexpected(EarlyExit{ExitStatus::Usage, {}, HelpOf(program)});
    }
    try {
        program.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        return Collect(*std::ranges::find_if(parsed, [](const auto& p) { return p.app->parsed(); }),
                       arguments);
    } catch (const CLI::CallForHelp&) {
        return std::unexpected(EarlyExit{ExitStatus::Done, HelpOf(program), {}});
    } catch (const CLI::ExtrasError& error) {
        const std::string what =
            UnknownOption(program).value_or(UnknownCommand(program, arguments).value_or(error.what()));
        return std::unexpected(EarlyExit{ExitStatus::Usage, {}, Complaint(CommandName(program), what)});
    } catch (const CLI::ParseError& error) {
        const std::string what = UnknownCommand(program, arguments).value_or(error.what());
        return std::unexpected(EarlyExit{ExitStatus::Usage, {}, Complaint(CommandName(program), what)});
    } catch (const UsageError& error) {
        return std::unexpected(
            EarlyExit{ExitStatus::Usage, {}, Complaint(CommandName(program), error.what())});
    }
}

}  // namespace lintara::cli
