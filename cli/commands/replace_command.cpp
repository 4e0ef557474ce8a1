// lintara replace: a text by another one in the lines of one component.
#include "cli/commands/commands.h"
#include "cli/edits/component_replace.h"
#include "cli/edits/edit_run.h"
#include "cli/guards/inserted_code.h"
#include "cli/help_text.h"
#include "cli/options/shared_options.h"
#include "cli/project/text_source.h"
#include "workspace/encoding.h"

namespace lintara::cli {
namespace {

constexpr std::string_view ReplaceFooter =
    "\nExamples:\n"
    "  lintara replace Invoicing.vbp --component Totals --find Amount --replace Total --whole-word\n"
    "      Rename a variable in the component Totals.\n"
    "  lintara replace Invoicing.vbp --component Totals --find Amount --replace Total --diff\n"
    "      Show what that would change, and change nothing.\n"
    "  lintara replace Totals.bas --component Totals --find 'Stop: ' --replace '' --from 10 --to 42\n"
    "      Take a text out of the lines 10 to 42, as the IDE counts them.\n"
    "\nHow it searches:\n"
    "  Letter case does not matter, and no character of the text is special. A text that spans\n"
    "  lines can be found, but is never replaced. A replacement may have several lines. In a group\n"
    "  of projects, Project.Component names a component.\n"
    "\nWhat is refused:\n"
    "  The search goes on at the column where the match ended before the replacement. A command is\n"
    "  refused that would so meet its own replacement again, or pass over a text that moved towards\n"
    "  the start of its line. --exact turns this check off.\n" LINTARA_EDITING_STATUSES;

constexpr std::string_view What = "What to replace";

// Line breaks of any kind as the code modules have them.
Text CodeText(const std::string& given) {
    return WithLineBreaks(workspace::FromUtf8(given));
}

ReplaceRequest ReadRequest(const OptionReader& given) {
    ReplaceRequest request{.sought = CodeText(given.TextOf("find").value_or("")),
                           .replacement = CodeText(given.TextOf("replace").value_or("")),
                           .from = given.WholeNumber("from", 1),
                           .wholeWord = given.Flag("whole-word"),
                           .exact = given.Flag("exact")};
    Require(request.from >= 1, "--from: lines are numbered from 1");
    if (given.Has("to")) {
        request.to = given.WholeNumber("to", 0);
        Require(*request.to >= 1, "--to: lines are numbered from 1");
        Require(request.from <= *request.to, "--from " + std::to_string(request.from) + " lies behind --to " +
                                                 std::to_string(*request.to));
    }
    return request;
}

ExitStatus Run(const OptionReader& given, Environment& environment) {
    const ReplaceRequest request = ReadRequest(given);
    const EditCommandOptions options = ReadEditCommand(given);
    Require(options.scope.components.front().find_first_of("*?") == std::string::npos,
            "--component: give one component; patterns are not allowed here");
    const EditJob job{.command = "replace",
                      .stage = "replacing",
                      .done = "Replaced in",
                      .wouldDo = "Would replace in",
                      .makeEditor =
                          [&](workspace::Workspace& workspace, std::shared_ptr<hostmodel::Globals> globals) {
                              return std::make_unique<ComponentReplace>(workspace, std::move(globals),
                                                                        request);
                          },
                      .rules = {.replace = ReplaceRules{.sought = request.sought,
                                                        .replacement = request.replacement,
                                                        .from = request.from,
                                                        .to = request.to,
                                                        .wholeWord = request.wholeWord},
                                .exact = request.exact}};
    return RunEdit(options, job, environment);
}

std::vector<OptionInfo> RequestOptions() {
    OptionInfo component = ValueOption("component", "NAME", "The component to edit", What);
    component.required = true;
    OptionInfo find = ValueOption("find", "TEXT", "The text to search", What);
    find.required = true;
    OptionInfo replace = ValueOption("replace", "TEXT", "What to put in its place; may be empty", What);
    replace.required = true;
    replace.mayBeEmpty = true;
    return {component,
            find,
            replace,
            ValueOption("from", "LINE", "The first line to search; default 1", What),
            ValueOption("to", "LINE", "The last one; default the last line", What),
            {.name = "whole-word", .description = "Find whole words only", .group = What}};
}

// Nothing is skipped here.
std::vector<OptionInfo> ExactOption() {
    std::vector<OptionInfo> options = SafetyOptions();
    std::erase_if(options, [](const OptionInfo& option) { return option.name != "exact"; });
    return options;
}

}  // namespace

CommandInfo ReplaceCommand() {
    return {.name = "replace",
            .description = "Replace a text in one component",
            .footer = ReplaceFooter,
            .arguments = {PathArgument()},
            .options = Joined({RequestOptions(), ReadingOptions(), ProjectReadingOptions(), SavingOptions(),
                               ExactOption(), ReportOptions()}),
            .run = Run};
}

}  // namespace lintara::cli
