#include "cli/options.h"

#include "cli/help_text.h"
#include "cli/near_names.h"
#include "cli/option_values.h"
#include "cli/terminal_text.h"
#include "workspace/characters.h"
#include "workspace/encoding.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <system_error>

#include <CLI/CLI.hpp>

namespace lintara::cli {
namespace {

constexpr std::array AllVerbs = {Verb::List, Verb::Insert, Verb::Remove, Verb::Member, Verb::Recover};
constexpr int SmallestBase = 10000;
constexpr int LargestBase = 99999;

// The options as they stand on the command line, before they are checked.
struct RawOptions {
    std::string path;
    bool version = false;
    bool lineNumbers = false;
    std::string base;
    std::string step;
    std::string scope;
    std::string at;
    std::string output;
    std::string backup;
    std::string wait;

    Options options;
};

// Thrown by the checks below and turned into an EarlyExit by ParseCommandLine; CLI11 reports likewise.
class UsageError : public std::runtime_error {
  public:
    using std::runtime_error::runtime_error;
};

template <class T>
T ValueOrThrow(std::expected<T, std::string> result) {
    if (!result) {
        throw UsageError(result.error());
    }
    return *std::move(result);
}

void Require(bool condition, const char* complaint) {
    if (!condition) {
        throw UsageError(complaint);
    }
}

void AddPath(CLI::App& app, RawOptions& raw) {
    app.add_option("PATH", raw.path, "Project (.vbp), group (.vbg), folder, or one component file")
        ->required()
        ->type_name("");
}

void AddReading(CLI::App& app, RawOptions& raw) {
    const char* const group = "Reading";
    app.add_option("--code-page", raw.options.read.codePage,
                   "Of files without a byte order mark; default windows-1252")
        ->type_name("NAME")
        ->group(group);
    app.add_flag("--recursive", raw.options.read.recursive, "Of a folder, what lies below it, too")
        ->group(group);
    app.add_flag("--skip-missing", raw.options.read.skipMissing,
                 "Warn of components that the disk lacks, and go on")
        ->group(group);
}

void AddWait(CLI::App& app, RawOptions& raw, const char* group) {
    app.add_option("--wait", raw.wait, "Wait for another run on the project; default 10")
        ->type_name("SECONDS")
        ->group(group);
}

void AddScope(CLI::App& app, RawOptions& raw) {
    const char* const group = "Scope";
    app.add_option("--scope", raw.scope, "project (default), component or procedure")
        ->type_name("SCOPE")
        ->group(group);
    app.add_option("--component", raw.options.scope.components,
                   "Components of that name; repeatable, * and ? allowed")
        ->type_name("PATTERN")
        ->allow_extra_args(false)
        ->group(group);
    app.add_option("--procedure", raw.options.scope.procedures,
                   "Procedures of that name; repeatable, * and ? allowed")
        ->type_name("PATTERN")
        ->allow_extra_args(false)
        ->group(group);
    app.add_option("--at", raw.at, "The procedure under a caret")
        ->type_name("COMPONENT:LINE[:COLUMN]")
        ->group(group);
}

void AddSaving(CLI::App& app, RawOptions& raw) {
    const char* const group = "What happens to the files (default: edited in place)";
    EditOptions& edit = raw.options.edit;
    app.add_flag("--check", edit.check, "Write nothing; status 1 when something would change")->group(group);
    app.add_flag("--diff", edit.diff, "Write nothing; show the changes as a unified diff")->group(group);
    app.add_option("-o,--output", raw.output, "Write a complete copy with the edits into DIR")
        ->type_name("DIR")
        ->group(group);
    app.add_option("--backup", raw.backup, "Keep each original as NAME + SUFFIX, in place of an older one")
        ->type_name("SUFFIX")
        ->group(group);
    AddWait(app, raw, group);
}

void AddSafety(CLI::App& app, RawOptions& raw) {
    const char* const group = "Safety";
    app.add_flag("--strict", raw.options.edit.strict, "Status 4 when procedures were skipped")->group(group);
    app.add_flag("--exact", raw.options.edit.exact, "Edit without the checks that keep code from harm")
        ->group(group);
}

void AddJson(CLI::App& app, RawOptions& raw, const char* description) {
    app.add_flag("--json", raw.options.json, description)->group("Output");
}

void AddEditing(CLI::App& app, RawOptions& raw) {
    AddScope(app, raw);
    AddSaving(app, raw);
    AddSafety(app, raw);
    AddJson(app, raw, "Print the report as one JSON object");
    app.add_flag("-q,--quiet", raw.options.quiet, "Print errors only")->group("Output");
}

void AddVerb(CLI::App& program, Verb verb, RawOptions& raw) {
    CLI::App& app = *program.add_subcommand(std::string(VerbName(verb)), std::string(VerbDescription(verb)));
    app.footer(std::string(VerbFooter(verb)));
    app.parse_complete_callback([verb, &raw] { raw.options.verb = verb; });
    AddPath(app, raw);
    if (verb != Verb::Recover) {
        AddReading(app, raw);
    }
    switch (verb) {
        case Verb::Insert:
            app.add_flag("--line-numbers", raw.lineNumbers, "Insert line numbers")->group("What to insert");
            app.add_option("--base", raw.base, "The first number of each procedure; default 10000")
                ->type_name("N")
                ->group("What to insert");
            app.add_option("--step", raw.step, "From line to line; default 5")
                ->type_name("N")
                ->group("What to insert");
            app.add_flag("--renumber", raw.options.numbers.renumber,
                         "Number procedures anew that have numbers")
                ->group("What to insert");
            AddEditing(app, raw);
            break;
        case Verb::Remove:
            app.add_flag("--line-numbers", raw.lineNumbers, "Remove line numbers")->group("What to remove");
            AddEditing(app, raw);
            break;
        case Verb::List:
            AddJson(app, raw, "Print one JSON object");
            break;
        case Verb::Member:
            app.add_option("--at", raw.at, "The caret")->required()->type_name("COMPONENT:LINE[:COLUMN]");
            AddJson(app, raw, "Print one JSON object");
            break;
        case Verb::Recover:
            AddWait(app, raw, "Saving");
            break;
    }
}

void CheckNumbers(const RawOptions& raw, Options& options) {
    if (!raw.base.empty()) {
        options.numbers.base = ValueOrThrow(ParseWholeNumber("--base", raw.base));
    }
    if (!raw.step.empty()) {
        options.numbers.step = ValueOrThrow(ParseWholeNumber("--step", raw.step));
    }
    Require(options.numbers.step != 0, "--step: a step of 0 gives every line the same number");
    if (options.edit.exact) {
        return;
    }
    Require(options.numbers.step >= 1, "--step: the step must be 1 or more");
    Require(options.numbers.base >= SmallestBase && options.numbers.base <= LargestBase,
            "--base: numbers must have five digits, or they cannot be removed again; "
            "give a base from 10000 to 99999");
}

void CheckScope(const RawOptions& raw, Options& options) {
    ScopeOptions& scope = options.scope;
    if (!raw.at.empty()) {
        scope.at = ValueOrThrow(ParseCaretPlace(raw.at));
        Require(scope.components.empty() && scope.procedures.empty(),
                "--at already says what to edit; it goes with neither --component nor --procedure");
    }
    const bool byProcedure = scope.at || !scope.procedures.empty();
    if (raw.scope.empty()) {
        scope.scope = byProcedure                ? Scope::Procedure
                      : scope.components.empty() ? Scope::Project
                                                 : Scope::Component;
        return;
    }
    scope.scope = ValueOrThrow(ParseScope(raw.scope));
    switch (scope.scope) {
        case Scope::Project:
            Require(
                scope.components.empty() && !byProcedure,
                "--scope project takes everything; it goes with none of --component, --procedure and --at");
            break;
        case Scope::Component:
            Require(scope.procedures.empty(),
                    "--scope component takes whole components; leave --procedure out");
            Require(scope.at || !scope.components.empty(),
                    "--scope component: say which with --component or --at");
            break;
        case Scope::Procedure:
            Require(byProcedure, "--scope procedure: say which with --procedure or --at");
            break;
    }
}

void CheckSaving(const RawOptions& raw, Options& options) {
    EditOptions& edit = options.edit;
    if (!raw.output.empty()) {
        edit.output = raw.output;
    }
    if (!raw.backup.empty()) {
        edit.backupSuffix = ValueOrThrow(ParseBackupSuffix(raw.backup));
    }
    Require(!(edit.check && edit.output), "--check writes nothing; it does not go with --output");
    Require(!(edit.diff && edit.output), "--diff writes nothing; it does not go with --output");
    Require(edit.writesInPlace() || edit.backupSuffix.empty(),
            "--backup keeps what an edit in place replaces; "
            "it goes with none of --check, --diff and --output");
    Require(!(edit.diff && options.json), "--diff and --json both want standard output; give one of them");
}

void CheckEmptyTexts(const CLI::App& app) {
    for (const CLI::Option* option : app.get_options()) {
        if (option->count() > 0 && option->get_expected_max() > 0 && option->get_type_size_max() > 0) {
            for (const std::string& text : option->results()) {
                if (text.empty()) {
                    throw UsageError(option->get_name() + ": the value is empty");
                }
            }
        }
    }
}

// What a project file names lies beside the file itself, not beside a link to it.
std::filesystem::path WithoutProjectLink(const std::filesystem::path& path) {
    const Text extension = workspace::FromUtf8(path.extension().string());
    const bool isProject = workspace::SameName(extension, u".vbp") || workspace::SameName(extension, u".vbg");
    std::error_code error;
    if (!isProject || !std::filesystem::is_symlink(path, error)) {
        return path;
    }
    std::filesystem::path file = std::filesystem::canonical(path, error);
    return error ? path : file;
}

Options CheckedOptions(const RawOptions& raw) {
    Options options = raw.options;
    options.path = WithoutProjectLink(raw.path);
    if (!raw.wait.empty()) {
        options.edit.waitSeconds = ValueOrThrow(ParseSeconds("--wait", raw.wait));
    }
    if (options.verb == Verb::Insert || options.verb == Verb::Remove) {
        const std::string verb(VerbName(options.verb));
        Require(raw.lineNumbers, ("say what to " + verb + ": --line-numbers").c_str());
        CheckNumbers(raw, options);
        CheckScope(raw, options);
        CheckSaving(raw, options);
    } else if (options.verb == Verb::Member) {
        options.scope.at = ValueOrThrow(ParseCaretPlace(raw.at));
    }
    return options;
}

std::string VersionText() {
    return "lintara " LINTARA_VERSION;
}

void DescribeProgram(CLI::App& program, RawOptions& raw) {
    program.name("lintara");
    program.footer(std::string(ProgramFooter()));
    program.require_subcommand(1);
    program.set_help_flag("-h,--help", "Print this help and exit");
    // For the help; it is answered before the rest is parsed.
    program.add_flag("--version", raw.version, "Print the version and exit");
    for (const Verb verb : AllVerbs) {
        AddVerb(program, verb, raw);
    }
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

std::string Complaint(const CLI::App& program, const std::string& what) {
    std::string command = "lintara";
    for (const CLI::App* verb : program.get_subcommands()) {
        command += " " + verb->get_name();
    }
    return command + ": " + Printable(std::string_view(what)) + "\nTry '" + command + " --help'.\n";
}

std::string UnknownVerb(const std::string& word) {
    std::vector<Text> names;
    for (const Verb verb : AllVerbs) {
        names.push_back(workspace::FromUtf8(VerbName(verb)));
    }
    return "there is no command '" + word + "'." + Suggestion(workspace::FromUtf8(word), names);
}

}  // namespace

std::expected<Options, EarlyExit> ParseCommandLine(std::span<const std::string> arguments) {
    // Answered ahead of everything else: editors and build scripts ask for it on every start.
    if (!arguments.empty() && arguments[0] == "--version") {
        return std::unexpected(EarlyExit{ExitStatus::Done, VersionText() + "\n", {}});
    }
    RawOptions raw;
    CLI::App program{std::string(ProgramDescription())};
    DescribeProgram(program, raw);
    if (arguments.empty()) {
        return std::unexpected(EarlyExit{ExitStatus::Usage, {}, HelpOf(program)});
    }
    try {
        program.parse(std::vector<std::string>(arguments.rbegin(), arguments.rend()));
        for (const CLI::App* verb : program.get_subcommands()) {
            CheckEmptyTexts(*verb);
        }
        return CheckedOptions(raw);
    } catch (const CLI::CallForHelp&) {
        return std::unexpected(EarlyExit{ExitStatus::Done, HelpOf(program), {}});
    } catch (const CLI::ParseError& error) {
        const bool noVerb = program.get_subcommands().empty() && !arguments[0].starts_with('-');
        const std::string what = noVerb ? UnknownVerb(arguments[0]) : error.what();
        return std::unexpected(EarlyExit{ExitStatus::Usage, {}, Complaint(program, what)});
    } catch (const UsageError& error) {
        return std::unexpected(EarlyExit{ExitStatus::Usage, {}, Complaint(program, error.what())});
    }
}

}  // namespace lintara::cli
