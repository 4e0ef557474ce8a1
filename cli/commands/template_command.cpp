// lintara template: code templates into code and back, from standard input to standard output.
#include "assistant/lintara.h"
#include "cli/commands/commands.h"
#include "cli/help_text.h"
#include "cli/options/option_values.h"
#include "cli/options/shared_options.h"
#include "cli/output/messages.h"
#include "cli/project/open_project.h"
#include "cli/project/text_source.h"
#include "cli/scope/scope.h"
#include "workspace/encoding.h"

namespace lintara::cli {
namespace {

#define LINTARA_PLACEHOLDERS                                                                   \
    "\nPlaceholders:\n"                                                                        \
    "  {ProjectName} {ComponentName} {MemberName} {MemberType}   the member under the caret\n" \
    "  {ControlName}     the control whose event it handles, of a form and the like\n"         \
    "  {ComputerName} {UserName} {Date} {Time}   of this machine, now\n"

constexpr std::string_view ExpandFooter =
    "\nExample:\n"
    "  echo 'Debug.Print \"{ComponentName}.{MemberName}\"' |\n"
    "    lintara template expand Invoicing.vbp --at Totals:42\n"
    "      What the template becomes in the member that holds line 42 of the component "
    "Totals.\n" LINTARA_PLACEHOLDERS
    "  One that has no value at the caret stays as it is. Letter case counts.\n" LINTARA_READING_STATUSES;

constexpr std::string_view GenerateFooter =
    "\nExample:\n"
    "  lintara template generate Invoicing.vbp --at Totals:42 < trace.txt > trace.template\n"
    "      Make a template of code that was written for the member that holds line 42.\n" LINTARA_PLACEHOLDERS
    "  Names are replaced wherever their letters stand, inside longer words, too; {Date} and {Time}\n"
    "  are not put back.\n" LINTARA_READING_STATUSES;

#undef LINTARA_PLACEHOLDERS

using Transform = Text (Lintara::*)(TextView) noexcept;

// The transformers touch no line ending, so the output has those of the input.
ExitStatus RunTransform(const OptionReader& given, Environment& environment, Transform transform) {
    const CaretPlace place = *given.Parsed("at", ParseCaretPlace);
    const ReadOptions read = ReadReading(given);
    Streams& streams = environment.streams;
    Messages messages(streams, false);
    Progress progress(streams, true);
    workspace::Workspace workspace;
    if (const auto opened = OpenOrComplain(workspace, read, streams.in, progress, messages); !opened) {
        return opened.error();
    }
    const auto found = FindCaretComponent(workspace, place);
    if (!found) {
        messages.Error({{}, 0, found.error()});
        return ExitStatus::Usage;
    }
    if (auto outside = CheckCaretLine(*found, place)) {
        messages.Error({{}, 0, *std::move(outside)});
        return ExitStatus::Usage;
    }
    const auto input = streams.in.ReadAll();
    if (!input) {
        messages.Error({{}, 0, input.error()});
        return ExitStatus::Failed;
    }
    const Position caret{place.line, place.column};
    workspace.SetActivePane({.project = found->project,
                             .component = found->component,
                             .selection = {caret, caret},
                             .topLine = place.line});
    Lintara lintara(environment.platform);
    lintara.oG = MakeGlobals(workspace, environment);
    streams.out.Write(workspace::ToUtf8((lintara.*transform)(DecodeText(*input))));
    return ExitStatus::Done;
}

ExitStatus RunExpand(const OptionReader& given, Environment& environment) {
    return RunTransform(given, environment, &Lintara::ParsePseudoCode);
}

ExitStatus RunGenerate(const OptionReader& given, Environment& environment) {
    return RunTransform(given, environment, &Lintara::GeneratePseudoCode);
}

std::vector<OptionInfo> TransformOptions() {
    const OptionInfo at{.name = "at",
                        .kind = OptionKind::Text,
                        .valueName = "COMPONENT:LINE[:COLUMN]",
                        .description = "The caret",
                        .required = true};
    return Joined({ReadingOptions(), {at}});
}

}  // namespace

CommandInfo TemplateExpandCommand() {
    return {.name = "template expand",
            .description = "Turn a template on standard input into code",
            .footer = ExpandFooter,
            .arguments = {PathArgument()},
            .options = TransformOptions(),
            .run = RunExpand};
}

CommandInfo TemplateGenerateCommand() {
    return {.name = "template generate",
            .description = "Turn code on standard input into a template",
            .footer = GenerateFooter,
            .arguments = {PathArgument()},
            .options = TransformOptions(),
            .run = RunGenerate};
}

}  // namespace lintara::cli
