#include "cli/options/handler_options.h"

#include "cli/buffers/buffer_source.h"
#include "cli/guards/inserted_code.h"
#include "cli/guards/labels.h"
#include "cli/options/shared_options.h"
#include "cli/output/terminal_text.h"

#include <initializer_list>

namespace lintara::cli {
namespace {

// How messages name where the template comes from.
std::string TemplateLabel(const OptionReader& given) {
    return given.LabelOf(given.Has("buffer") ? "buffer" : "template");
}

Text ReadCode(const OptionReader& given, Environment& environment) {
    if (auto code = ReadBufferSource(given, "template", environment)) {
        return *std::move(code);
    }
    const TextSource source = ReadTemplate(given);
    const bool fromStandardInput = std::holds_alternative<StandardInput>(source);
    Require(!fromStandardInput || given.Argument(0) != "-",
            given.LabelOf("template") + ": standard input holds the component already; give a file");
    auto code = ReadText(source, environment.streams.in);
    if (!code) {
        throw UsageError(given.LabelOf("template") + ": " + code.error());
    }
    return *std::move(code);
}

// A line ending alone would end a line of the file only.
bool HasStrayLineEnding(TextView code) {
    for (const Text& line : SplitLines(code)) {
        if (line.find_first_of(u"\r\n") != Text::npos) {
            return true;
        }
    }
    return false;
}

void RequireAsked(const OptionReader& given, bool asked, std::string_view work,
                  std::initializer_list<std::string_view> options) {
    for (const std::string_view option : options) {
        Require(asked || !given.IsOnCommandLine(option),
                "--" + std::string(option) + " is about " + std::string(work) + "; give --" +
                    (work == "line numbers" ? "line-numbers" : "error-handlers") + ", too");
    }
}

}  // namespace

std::optional<std::string> TemplateProblem(TextView code, TextView label) {
    if (code.empty()) {
        return "the template is empty";
    }
    if (HasStrayLineEnding(code)) {
        return "a line of the template ends in a lone CR or LF";
    }
    return ObjectionToCode(code, label);
}

WantedHandler ReadWantedHandler(const OptionReader& given, Environment& environment) {
    WantedHandler wanted{.label = ReadLabel(given), .code = {}};
    if (!given.Flag("exact")) {
        if (const auto problem = LabelProblem(wanted.label)) {
            throw UsageError(given.LabelOf("label") + ": '" + Printable(wanted.label) +
                             "' is no label: " + *problem);
        }
    }
    wanted.code = ReadCode(given, environment);
    if (const auto problem = ProblemOfSize(wanted.code)) {
        throw UsageError(TemplateLabel(given) + ": " + *problem);
    }
    if (!given.Flag("exact")) {
        const auto problem = TemplateProblem(wanted.code, wanted.label);
        Require(!problem, TemplateLabel(given) + ": " + problem.value_or(""));
    }
    return wanted;
}

void RequireWorkOf(const OptionReader& given, const WorkOptions& work) {
    RequireAsked(given, work.errorHandlers, "error handlers", {"label", "template", "buffer", "refresh"});
    RequireAsked(given, work.lineNumbers, "line numbers", {"base", "step", "numbering", "renumber"});
}

}  // namespace lintara::cli
