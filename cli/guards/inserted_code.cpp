#include "cli/guards/inserted_code.h"

#include "base/constants.h"
#include "cli/guards/custom_code_markers.h"
#include "cli/guards/directives.h"
#include "cli/guards/labels.h"
#include "cli/output/terminal_text.h"
#include "cli/project/logical_lines.h"
#include "workspace/characters.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <array>
#include <span>

namespace lintara::cli {
namespace {

// Of one statement; the IDE takes no more.
constexpr std::size_t MostContinuations = 24;

bool Closes(TextView statement) {
    using workspace::ProcedureWord;
    static constexpr std::array words{ProcedureWord::Sub, ProcedureWord::Function, ProcedureWord::Property};
    return std::ranges::any_of(
        words, [&](ProcedureWord word) { return workspace::ClosesProcedure(statement, word); });
}

// Whether the statement can stand only among the declarations of a module: these words are the language's
// own, and behind them it has a name there.
bool IsDeclaration(TextView statement) {
    static constexpr auto words = std::to_array<TextView>(
        {u"declare", u"defbool", u"defbyte", u"defcur",     u"defdate", u"defdbl", u"defint",
         u"deflng",  u"defobj",  u"defsng",  u"defstr",     u"defvar",  u"enum",   u"event",
         u"friend",  u"global",  u"option",  u"implements", u"private", u"public", u"type"});
    const std::size_t end = workspace::SkipWord(statement, 0);
    const std::size_t next = workspace::SkipBlanks(statement, end);
    return next > end && next < statement.size() && workspace::IsLetter(statement[next]) &&
           std::ranges::any_of(
               words, [&](TextView word) { return workspace::IsWord(statement.substr(0, end), word); });
}

std::optional<std::string> ObjectionToStatements(TextView logicalLine) {
    if (Closes(logicalLine)) {
        return "closes a procedure";
    }
    for (const TextView statement : workspace::SplitStatements(logicalLine)) {
        if (workspace::ParseHeader(statement)) {
            return "is the header of a procedure";
        }
        if (Closes(statement)) {
            return "closes a procedure";
        }
        if (IsDeclaration(statement)) {
            return "can stand only among the declarations of a module";
        }
    }
    return std::nullopt;
}

std::string LineAt(std::size_t index) {
    return "line " + std::to_string(index + 1);
}

std::optional<std::string> ObjectionToLabels(std::span<const Text> lines, TextView label) {
    std::vector<Text> seen;
    if (!label.empty()) {
        seen.emplace_back(label);
    }
    LogicalLines logical(lines);
    while (logical.Next()) {
        const TextView found = LabelOfLine(logical.text());
        if (found.empty()) {
            continue;
        }
        if (std::ranges::any_of(seen, [&](const Text& s) { return workspace::SameName(s, found); })) {
            return LineAt(logical.first()) + " has the label " + Printable(found) +
                   ", which stands ahead of it already";
        }
        seen.emplace_back(found);
    }
    return std::nullopt;
}

}  // namespace

std::vector<Text> SplitLines(TextView text) {
    std::vector<Text> lines;
    for (std::size_t at = 0;;) {
        const std::size_t end = text.find(constants::LineBreak, at);
        lines.emplace_back(text.substr(at, end - at));
        if (end == TextView::npos) {
            return lines;
        }
        at = end + constants::LineBreak.size();
    }
}

bool IsAttributeLine(TextView line) {
    const std::size_t at = workspace::SkipBlanks(line);
    const std::size_t end = workspace::SkipWord(line, at);
    return workspace::IsWord(line.substr(at, end - at), u"attribute") && end < line.size() &&
           workspace::IsBlank(line[end]);
}

std::optional<std::string> ObjectionToCode(TextView code, TextView label) {
    const std::vector<Text> lines = SplitLines(code);
    if (workspace::Continues(lines.back())) {
        return "its last line ends in an underscore and would swallow the line below it";
    }
    LogicalLines logical(lines);
    while (logical.Next()) {
        const std::string place = LineAt(logical.first());
        if (auto objection = ObjectionToStatements(logical.text())) {
            return place + " " + *objection;
        }
        if (logical.end() - logical.first() - 1 > MostContinuations) {
            return place + " has more than " + std::to_string(MostContinuations) +
                   " continuation lines, which the IDE does not accept";
        }
    }
    if (const auto attribute = std::ranges::find_if(lines, IsAttributeLine); attribute != lines.end()) {
        return LineAt(static_cast<std::size_t>(attribute - lines.begin())) +
               " is an attribute, which the IDE would hide";
    }
    if (const auto directive = FindUnbalancedDirective(lines)) {
        return LineAt(directive->line) + " is " + std::string(NameOf(directive->directive)) +
               (directive->directive == Directive::If ? " without #End If" : " without #If");
    }
    if (auto objection = ObjectionToLabels(lines, label)) {
        return objection;
    }
    const auto marked = std::ranges::find_if(lines, HoldsMarkerText);
    if (marked != lines.end()) {
        return LineAt(static_cast<std::size_t>(marked - lines.begin())) +
               " holds the text of a marker line, and removal would go by it";
    }
    return std::nullopt;
}

}  // namespace lintara::cli
