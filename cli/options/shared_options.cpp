#include "cli/options/shared_options.h"

#include "base/constants.h"
#include "cli/options/number_rules.h"
#include "cli/options/option_values.h"
#include "cli/output/terminal_text.h"
#include "workspace/characters.h"
#include "workspace/encoding.h"
#include "workspace/project_folders.h"

#include <system_error>

namespace lintara::cli {
namespace {

constexpr double UsualWait = 10;

constexpr std::string_view Reading = "Reading";
constexpr std::string_view ScopeHeading = "Scope";
constexpr std::string_view Saving = "What happens to the files (default: edited in place)";
constexpr std::string_view Safety = "Safety";
constexpr std::string_view Output = "Output";

void CheckGivenScope(const ScopeOptions& scope, bool byProcedure) {
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

}  // namespace

std::vector<OptionInfo> Joined(std::initializer_list<std::vector<OptionInfo>> lists) {
    std::vector<OptionInfo> joined;
    for (const std::vector<OptionInfo>& list : lists) {
        joined.insert(joined.end(), list.begin(), list.end());
    }
    return joined;
}

ArgumentInfo PathArgument() {
    return {.name = "PATH", .description = "Project (.vbp), group (.vbg), folder, or one component file"};
}

std::vector<OptionInfo> ProjectFileOptions() {
    return {
        {.name = "config",
         .kind = OptionKind::Text,
         .valueName = "FILE",
         .description = "Take options from FILE; default: .lintara.toml beside or above the project",
         .group = Reading},
        {.name = "no-config", .description = "Take options from no file", .group = Reading},
    };
}

std::vector<OptionInfo> ReadingOptions() {
    const std::vector<OptionInfo> reading = {
        {.name = "code-page",
         .kind = OptionKind::Text,
         .valueName = "NAME",
         .description = "Of files without a byte order mark; default windows-1252",
         .group = Reading,
         .inProjectFile = true,
         .absent = "windows-1252"},
        {.name = "recursive",
         .description = "Of a folder, what lies below it, too",
         .group = Reading,
         .inProjectFile = true},
        {.name = "skip-missing",
         .description = "Warn of components that the disk lacks, and go on",
         .group = Reading,
         .inProjectFile = true},
    };
    return Joined({reading, ProjectFileOptions()});
}

std::vector<OptionInfo> ProjectReadingOptions() {
    return {
        {.name = "keep-going",
         .description = "Leave out components that cannot be read; status 3 at the end",
         .group = Reading,
         .inProjectFile = true},
        {.name = "stdin-filename",
         .kind = OptionKind::Text,
         .valueName = "NAME",
         .description = "With PATH -: the name of the component that standard input holds",
         .group = Reading},
    };
}

ReadOptions ReadReading(const OptionReader& given) {
    const bool mayBeStandardInput = given.command().Option("stdin-filename") != nullptr;
    const bool fromStandardInput = mayBeStandardInput && given.Argument(0) == "-";
    Require(!fromStandardInput || given.Has("stdin-filename"),
            "PATH - is standard input; say with --stdin-filename what component it holds");
    Require(fromStandardInput || !given.Has("stdin-filename"),
            "--stdin-filename names what standard input holds; give - as PATH");
    return {.path = workspace::WithoutProjectLink(given.Argument(0)),
            .codePage = given.TextOf("code-page").value_or(""),
            .recursive = given.Flag("recursive"),
            .skipMissing = given.Flag("skip-missing"),
            .keepGoing = given.Flag("keep-going"),
            .stdinFilename = given.TextOf("stdin-filename")};
}

std::vector<OptionInfo> ScopeOptionInfos() {
    return {
        {.name = "scope",
         .kind = OptionKind::Text,
         .valueName = "SCOPE",
         .description = "project (default), component or procedure",
         .group = ScopeHeading,
         .values = scopeWords},
        {.name = "component",
         .kind = OptionKind::Texts,
         .valueName = "PATTERN",
         .description = "Components of that name; repeatable, * and ? allowed",
         .group = ScopeHeading},
        {.name = "procedure",
         .kind = OptionKind::Texts,
         .valueName = "PATTERN",
         .description = "Procedures of that name; repeatable, * and ? allowed",
         .group = ScopeHeading},
        {.name = "at",
         .kind = OptionKind::Text,
         .valueName = "COMPONENT:LINE[:COLUMN]",
         .description = "The procedure under a caret",
         .group = ScopeHeading},
        {.name = "exclude",
         .kind = OptionKind::Texts,
         .valueName = "PATTERN",
         .description = "Leave out a Component, or a Component.Procedure; repeatable, * and ? allowed",
         .group = ScopeHeading,
         .inProjectFile = true},
    };
}

ScopeOptions ReadScope(const OptionReader& given) {
    ScopeOptions scope{.components = given.TextsOf("component"),
                       .procedures = given.TextsOf("procedure"),
                       .excluded = given.TextsOf("exclude"),
                       .mustExclude = given.IsOnCommandLine("exclude"),
                       .at = given.Parsed("at", ParseCaretPlace)};
    Require(!scope.at || (scope.components.empty() && scope.procedures.empty()),
            "--at already says what to edit; it goes with neither --component nor --procedure");
    const bool byProcedure = scope.at || !scope.procedures.empty();
    if (const auto asked = given.Parsed("scope", ParseScope)) {
        scope.scope = *asked;
        CheckGivenScope(scope, byProcedure);
    } else {
        scope.scope = byProcedure                ? Scope::Procedure
                      : scope.components.empty() ? Scope::Project
                                                 : Scope::Component;
    }
    return scope;
}

// A project must not give it to itself, so no project file may.
OptionInfo AllowOutsideOption() {
    return {.name = "allow-outside",
            .kind = OptionKind::Texts,
            .valueName = "DIR",
            .description = "Edit files below DIR, too, though it lies outside of PATH's folder; repeatable",
            .group = Saving};
}

std::vector<std::filesystem::path> ReadAllowedOutside(const OptionReader& given) {
    std::vector<std::filesystem::path> folders;
    for (const std::string& text : given.TextsOf("allow-outside")) {
        std::error_code error;
        Require(std::filesystem::is_directory(text, error), "--allow-outside: there is no folder " + text);
        folders.emplace_back(text);
    }
    return folders;
}

OptionInfo WaitOption() {
    return {.name = "wait",
            .kind = OptionKind::Text,
            .valueName = "SECONDS",
            .description = "Wait for another run on the project; default 10",
            .group = Saving,
            .inProjectFile = true,
            .absent = "10"};
}

double ReadWait(const OptionReader& given) {
    return given.Parsed("wait", ParseSeconds).value_or(UsualWait);
}

std::vector<OptionInfo> SavingOptions() {
    return {
        {.name = "check",
         .description = "Write nothing; status 1 when something would change",
         .group = Saving},
        {.name = "diff", .description = "Write nothing; show the changes as a unified diff", .group = Saving},
        {.name = "list",
         .description = "Write nothing; print the names of the files that would change",
         .group = Saving},
        {.name = "output",
         .kind = OptionKind::Text,
         .valueName = "DIR",
         .description = "Write a complete copy with the edits into DIR",
         .group = Saving,
         .shortName = 'o'},
        {.name = "backup",
         .kind = OptionKind::Text,
         .valueName = "SUFFIX",
         .description = "Keep each original as NAME + SUFFIX, in place of an older one",
         .group = Saving},
        AllowOutsideOption(),
        WaitOption(),
    };
}

std::vector<OptionInfo> SafetyOptions() {
    return {
        {.name = "strict",
         .description = "Status 4 when procedures were skipped",
         .group = Safety,
         .inProjectFile = true},
        {.name = "exact", .description = "Edit without the checks that keep code from harm", .group = Safety},
    };
}

EditOptions ReadEditing(const OptionReader& given) {
    EditOptions edit{.check = given.Flag("check"),
                     .diff = given.Flag("diff"),
                     .list = given.Flag("list"),
                     .output = given.TextOf("output"),
                     .backupSuffix = given.Parsed("backup", ParseBackupSuffix).value_or(""),
                     .allowedOutside = ReadAllowedOutside(given),
                     .exact = given.Flag("exact"),
                     .strict = given.Flag("strict"),
                     .waitSeconds = ReadWait(given)};
    Require(!(edit.check && edit.output), "--check writes nothing; it does not go with --output");
    Require(!(edit.diff && edit.output), "--diff writes nothing; it does not go with --output");
    Require(!(edit.list && edit.output), "--list writes nothing; it does not go with --output");
    Require(edit.writesInPlace() || edit.backupSuffix.empty(),
            "--backup keeps what an edit in place replaces; "
            "it goes with none of --check, --diff, --list and --output");
    Require(!edit.output || edit.allowedOutside.empty(),
            "--allow-outside is about files that are edited in place; it does not go with --output");
    const int results = (edit.diff ? 1 : 0) + (edit.list ? 1 : 0) + (given.Flag("json") ? 1 : 0);
    Require(results <= 1, "--diff, --list and --json all want standard output; give one of them");
    return edit;
}

OptionInfo JsonOption() {
    return {.name = "json", .description = "Print one JSON object", .group = Output};
}

std::vector<OptionInfo> ReportOptions() {
    return {
        {.name = "json", .description = "Print the report as one JSON object", .group = Output},
        {.name = "quiet", .description = "Print errors only", .group = Output, .shortName = 'q'},
    };
}

OutputOptions ReadOutput(const OptionReader& given) {
    return {.json = given.Flag("json"), .quiet = given.Flag("quiet")};
}

std::vector<OptionInfo> EditCommandOptionInfos() {
    return Joined({ReadingOptions(), ProjectReadingOptions(), ScopeOptionInfos(), SavingOptions(),
                   SafetyOptions(), ReportOptions()});
}

EditCommandOptions ReadEditCommand(const OptionReader& given) {
    if (given.Argument(0) == "-") {
        Require(!given.Has("output") && !given.Has("backup"),
                "PATH - writes the component to standard output; it goes with neither --output nor --backup");
        Require(!given.Flag("json") || given.Flag("check"),
                "PATH - and --json both want standard output; give --check, too, or one of them");
    }
    return {.read = ReadReading(given),
            .scope = ReadScope(given),
            .edit = ReadEditing(given),
            .output = ReadOutput(given)};
}

std::vector<OptionInfo> WorkOptionInfos(std::string_view group) {
    return {
        {.name = "error-handlers", .description = "Error handlers", .group = group, .inProjectFile = true},
        {.name = "line-numbers", .description = "Line numbers", .group = group, .inProjectFile = true},
    };
}

WorkOptions ReadWork(const OptionReader& given) {
    const bool onCommandLine =
        given.IsOnCommandLine("error-handlers") || given.IsOnCommandLine("line-numbers");
    const auto asked = [&](std::string_view name) {
        return given.Flag(name) && (!onCommandLine || given.IsOnCommandLine(name));
    };
    return {.errorHandlers = asked("error-handlers"), .lineNumbers = asked("line-numbers")};
}

std::vector<OptionInfo> NumberOptionInfos(std::string_view group) {
    return {
        {.name = "base",
         .kind = OptionKind::Text,
         .valueName = "N",
         .description = "The first number of each procedure; default 10000",
         .group = group,
         .inProjectFile = true,
         .setting = constants::LineNumberBaseKey},
        {.name = "step",
         .kind = OptionKind::Text,
         .valueName = "N",
         .description = "From line to line; default 5",
         .group = group,
         .inProjectFile = true,
         .setting = constants::LineNumberStepKey},
        {.name = "numbering",
         .kind = OptionKind::Text,
         .valueName = "WHAT",
         .description = "procedure (default): from the base in each; module: 10000 and the module's line",
         .group = group,
         .inProjectFile = true,
         .values = numberingWords,
         .absent = "procedure"},
    };
}

NumberOptions ReadNumbers(const OptionReader& given) {
    NumberOptions numbers{
        .renumber = given.Flag("renumber"),
        .numbering = given.Parsed("numbering", ParseNumbering).value_or(Numbering::Procedure)};
    if (numbers.numbering == Numbering::Module) {
        for (const std::string_view name : {"base", "step"}) {
            Require(!given.IsOnCommandLine(name), "--" + std::string(name) + ": with " +
                                                      given.LabelOf("numbering") +
                                                      " module every number follows from its line");
        }
        return numbers;
    }
    numbers.base = given.WholeNumber("base", numbers.base);
    numbers.step = given.WholeNumber("step", numbers.step);
    const auto stepProblem = StepProblem(numbers.step);
    const bool exact = given.Flag("exact");
    Require(!stepProblem || (exact && numbers.step != 0),
            given.LabelOf("step") + ": " + stepProblem.value_or(""));
    const auto baseProblem = BaseProblem(numbers.base);
    Require(!baseProblem || exact, given.LabelOf("base") + ": " + baseProblem.value_or(""));
    return numbers;
}

OptionInfo LabelOption(std::string_view group) {
    return {.name = "label",
            .kind = OptionKind::Text,
            .valueName = "LABEL",
            .description = "The handler's label; default: the user's setting, or hErr",
            .group = group,
            .inProjectFile = true,
            .setting = constants::ErrorHandlerLabelKey};
}

OptionInfo TemplateOption(std::string_view group) {
    return {.name = "template",
            .kind = OptionKind::Text,
            .valueName = "FILE",
            .description = "The handler's code, - for standard input; default: user's setting, or built in",
            .group = group,
            .inProjectFile = true,
            .isPath = true,
            .setting = constants::ErrorHandlerCodeKey};
}

Text ReadLabel(const OptionReader& given) {
    const auto label = given.TextOf("label");
    return label ? workspace::FromUtf8(*label) : Text(constants::DefaultErrorHandlerLabel);
}

namespace {

// A pipe is something that only the user himself names: to read one is to wait for whoever writes to it.
void RequireNoPipe(const std::string& label, const std::filesystem::path& path) {
    std::error_code error;
    Require(!std::filesystem::is_fifo(path, error),
            label + ": " + PrintablePath(path) + " is a pipe, not a file");
}

}  // namespace

TextSource ReadTemplate(const OptionReader& given) {
    const GivenOption* option = given.given().Find("template");
    if (option == nullptr) {
        return Text(constants::DefaultErrorHandlerCode);
    }
    if (option->origin == OptionOrigin::UserSettings) {
        return workspace::FromUtf8(option->texts.front());
    }
    if (option->origin == OptionOrigin::ProjectFile) {
        RequireNoPipe(given.LabelOf("template"), option->texts.front());
    }
    return SourceFromArgument(option->texts.front());
}

}  // namespace lintara::cli
