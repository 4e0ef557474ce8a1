#include "cli/guards/inserted_code.h"

#include "base/constants.h"
#include "cli/guards/custom_code_markers.h"
#include "cli/project/logical_lines.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <array>

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

std::optional<std::string> ObjectionToCode(TextView code) {
    const std::vector<Text> lines = SplitLines(code);
    if (workspace::Continues(lines.back())) {
        return "its last line ends in an underscore and would swallow the line below it";
    }
    LogicalLines logical(lines);
    while (logical.Next()) {
        const std::string place = "line " + std::to_string(logical.first() + 1);
        if (auto objection = ObjectionToStatements(logical.text())) {
            return place + " " + *objection;
        }
        if (logical.end() - logical.first() - 1 > MostContinuations) {
            return place + " has more than " + std::to_string(MostContinuations) +
                   " continuation lines, which the IDE does not accept";
        }
    }
    const auto marked = std::ranges::find_if(lines, HoldsMarkerText);
    if (marked != lines.end()) {
        return "line " + std::to_string(marked - lines.begin() + 1) +
               " holds the text of a marker line, and removal would go by it";
    }
    return std::nullopt;
}

}  // namespace lintara::cli
