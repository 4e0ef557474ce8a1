#include "cli/dialog/dialog_kinds.h"

#include "base/numbers.h"
#include "base/utf8.h"
#include "cli/options/usage_error.h"

#include <algorithm>
#include <limits>
#include <stdexcept>

namespace lintara::cli {
namespace {

using Id = std::numeric_limits<std::int16_t>;
using LineLimits = std::numeric_limits<std::int32_t>;

void Add(GivenOptions& options, std::string_view name, std::string text) {
    options.Remove(name);
    options.Add(name, {.texts = {std::move(text)}});
}

void AddFlag(GivenOptions& options, std::string_view name, bool value) {
    Add(options, name, value ? "true" : "false");
}

// As the language converts a text to a number.
void AddNumber(const WindowAnswer& answer, const char* member, const std::string& caption,
               std::string_view option, GivenOptions& options) {
    const std::string text = answer.TextOf(member);
    const Result<std::int32_t> number = CLng(FromUtf8(text));
    Require(number.has_value(), caption + ": '" + text + "' is no number of 32 bits");
    Add(options, option, std::to_string(*number));
}

// A text that is read from standard input loses the line ending at its end.
std::string AsInput(const std::string& text) {
    return text + "\r\n";
}

Json HandlersRequest(std::string_view window, const CaretAnswers& caret) {
    constexpr std::size_t most = std::numeric_limits<std::int16_t>::max();
    return {{"window", window},
            {"iLenGetMemberName", std::min(caret.member.size(), most)},
            {"iGetLineNumber", caret.line}};
}

Json CodeRequest(std::string_view window, const CaretAnswers& caret) {
    return {{"window", window}, {"ProcAvailable", !caret.member.empty()}, {"ComponentAvailable", caret.line}};
}

// Options of work that the user did not ask for would be refused.
void AddWork(bool handlers, bool numbers, GivenOptions& options) {
    Require(handlers || numbers, "neither error handlers nor line numbers were asked for");
    AddFlag(options, "error-handlers", handlers);
    AddFlag(options, "line-numbers", numbers);
    if (!handlers) {
        options.Remove("refresh");
    }
    if (!numbers) {
        options.Remove("renumber");
    }
}

void AddHandlerInsertion(const WindowAnswer& answer, StandInRun& run) {
    const bool handlers = answer.Flag("InsertEH");
    const bool numbers = answer.Flag("InsertLN");
    AddWork(handlers, numbers, run.options);
    if (handlers) {
        Add(run.options, "label", answer.TextOf("EHLabel"));
        Add(run.options, "template", "-");
        run.input = AsInput(answer.TextOf("EHCode"));
    }
    if (numbers) {
        AddNumber(answer, "LNBase", "the base number", "base", run.options);
        AddNumber(answer, "LNStep", "the step", "step", run.options);
    }
}

void AddHandlerRemoval(const WindowAnswer& answer, StandInRun& run) {
    AddWork(answer.Flag("RemoveEH"), answer.Flag("RemoveLN"), run.options);
}

void AddCodeInsertion(const WindowAnswer& answer, StandInRun& run) {
    constexpr std::string_view places[] = {"first", "last", "line"};
    const std::int32_t where = answer.Number("WhereToInsert", 1, 3);
    Add(run.options, "where", std::string(places[where - 1]));
    if (where == 3) {
        Add(run.options, "line",
            std::to_string(answer.Number("LineToInsert", LineLimits::min(), LineLimits::max())));
    }
    Add(run.options, "id", std::to_string(answer.Number("ID", Id::min(), Id::max())));
    AddFlag(run.options, "no-markers", answer.Flag("NoDelimiters"));
    Add(run.options, "code", "-");
    run.input = AsInput(answer.TextOf("TextToInsert"));
}

void AddCodeRemoval(const WindowAnswer& answer, StandInRun& run) {
    Add(run.options, "id", std::to_string(answer.Number("ID", Id::min(), Id::max())));
}

std::vector<std::string> HandlersAndNumbers(bool /*hasRememberedCode*/) {
    return {"--error-handlers", "--line-numbers"};
}

std::vector<std::string> BlockOfRememberedCode(bool hasRememberedCode) {
    return hasRememberedCode ? std::vector<std::string>{"--id", "1"}
                             : std::vector<std::string>{"--id", "1", "--code", "code.txt"};
}

std::vector<std::string> BlockByNumber(bool /*hasRememberedCode*/) {
    return {"--id", "1"};
}

constexpr DialogKind insertHandlers{
    .window = "insert-eh",
    .command = "insert",
    .request = [](const CaretAnswers& caret) { return HandlersRequest("insert-eh", caret); },
    .addChoice = AddHandlerInsertion,
    .usualOptions = HandlersAndNumbers,
    .offersProcedureFirst = true,
    .buffer = {.taken = "sCCPBuffer", .given = "sCCPBuffer", .isGivenEmpty = true}};

constexpr DialogKind removeHandlers{
    .window = "remove-eh",
    .command = "remove",
    .request = [](const CaretAnswers& caret) { return HandlersRequest("remove-eh", caret); },
    .addChoice = AddHandlerRemoval,
    .usualOptions = HandlersAndNumbers,
    .offersProcedureFirst = true};

constexpr DialogKind insertCode{
    .window = "insert-code",
    .command = "custom insert",
    .request = [](const CaretAnswers& caret) { return CodeRequest("insert-code", caret); },
    .addChoice = AddCodeInsertion,
    .usualOptions = BlockOfRememberedCode,
    .offersProcedureFirst = false,
    .buffer = {.given = "sCCPBufferX"}};

constexpr DialogKind removeCode{
    .window = "remove-code",
    .command = "custom remove",
    .request = [](const CaretAnswers& caret) { return CodeRequest("remove-code", caret); },
    .addChoice = AddCodeRemoval,
    .usualOptions = BlockByNumber,
    .offersProcedureFirst = false};

}  // namespace

// By names, not by the caret: lines may have moved while the window was open.
void AddScope(const WindowAnswer& answer, const CaretAnswers& caret, GivenOptions& options) {
    const std::int32_t scope = answer.Number("Scope", 1, 3);
    if (scope == 3) {
        if (caret.isOneOfSeveralProjects) {
            Add(options, "component", ToUtf8(caret.project) + ".*");
        }
        return;
    }
    Add(options, "component", ToUtf8(caret.project + u"." + caret.component));
    if (scope == 1) {
        if (caret.member.empty()) {
            throw std::runtime_error(
                "lintara-window chose the current procedure, but the caret is in no procedure");
        }
        Add(options, "procedure", ToUtf8(caret.member));
    }
}

const DialogKind& InsertHandlersDialog() {
    return insertHandlers;
}

const DialogKind& RemoveHandlersDialog() {
    return removeHandlers;
}

const DialogKind& InsertCodeDialog() {
    return insertCode;
}

const DialogKind& RemoveCodeDialog() {
    return removeCode;
}

}  // namespace lintara::cli
