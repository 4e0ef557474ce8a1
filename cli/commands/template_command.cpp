// lintara template: code templates into code and back, from standard input or a buffer to standard output.
#include "assistant/lintara.h"
#include "cli/buffers/buffer_source.h"
#include "cli/commands/commands.h"
#include "cli/help_text.h"
#include "cli/options/shared_options.h"
#include "cli/output/messages.h"
#include "cli/output/terminal_text.h"
#include "cli/project/caret.h"
#include "cli/project/open_project.h"
#include "cli/project/text_source.h"
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

// From the buffer that was named, else from standard input.
std::expected<Text, std::string> ReadInput(const OptionReader& given, Environment& environment) {
    if (auto text = ReadBufferSource(given, {}, environment)) {
        return *std::move(text);
    }
    const auto bytes = environment.streams.in.ReadAll();
    if (!bytes) {
        return std::unexpected(bytes.error());
    }
    return DecodeText(*bytes);
}

// The transformers touch no line ending, so the output has those of the input.
ExitStatus RunTransform(const OptionReader& given, Environment& environment, Transform transform) {
    Streams& streams = environment.streams;
    workspace::Workspace workspace;
    if (const auto caret = OpenAtCaret(workspace, given, environment); !caret) {
        return caret.error();
    }
    const auto input = ReadInput(given, environment);
    if (!input) {
        Messages(streams, false).Error({{}, 0, input.error()});
        return ExitStatus::Failed;
    }
    Lintara lintara(environment.platform);
    lintara.oG = MakeGlobals(workspace, environment);
    streams.out.Write(ForReader(workspace::ToUtf8((lintara.*transform)(*input)), streams.outIsTerminal));
    return ExitStatus::Done;
}

ExitStatus RunExpand(const OptionReader& given, Environment& environment) {
    return RunTransform(given, environment, &Lintara::ParsePseudoCode);
}

ExitStatus RunGenerate(const OptionReader& given, Environment& environment) {
    return RunTransform(given, environment, &Lintara::GeneratePseudoCode);
}

}  // namespace

CommandInfo TemplateExpandCommand() {
    return {.name = "template expand",
            .description = "Turn a template on standard input or in a buffer into code",
            .footer = ExpandFooter,
            .arguments = {PathArgument()},
            .options = Joined({ReadingOptions(), {CaretOption(), BufferOption({})}}),
            .run = RunExpand};
}

CommandInfo TemplateGenerateCommand() {
    return {.name = "template generate",
            .description = "Turn code on standard input or in a buffer into a template",
            .footer = GenerateFooter,
            .arguments = {PathArgument()},
            .options = Joined({ReadingOptions(), {CaretOption(), BufferOption({})}}),
            .run = RunGenerate};
}

}  // namespace lintara::cli
