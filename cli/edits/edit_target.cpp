#include "cli/edits/edit_target.h"

#include "base/constants.h"
#include "cli/edits/refusal.h"
#include "cli/guards/body_guard.h"
#include "cli/guards/crowded_lines.h"
#include "cli/guards/directives.h"
#include "cli/guards/range_guard.h"
#include "cli/output/terminal_text.h"
#include "workspace/syntax.h"

#include <string>

namespace lintara::cli {

std::optional<Skip> CheckRanges(const EditTarget& target, const ProcedureGroup& group,
                                const ProcedureText& text) {
    auto mismatch = CompareRanges(target.RangesOf(group), group, target.module);
    for (const ProcedureText::Part& part : text.parts()) {
        if (!mismatch) {
            mismatch = FindForeignLine(text.body(part), part.body.begin, target.module);
        }
    }
    if (!mismatch) {
        return std::nullopt;
    }
    return Skip{SkipReason::RangeMismatch, mismatch->line, std::move(mismatch->message)};
}

std::optional<Skip> CheckRanges(const EditTarget& target, const ProcedureGroup& group) {
    ProcedureText text;
    text.Read(target.module, group);
    return CheckRanges(target, group, text);
}

std::optional<Skip> CheckBodyEnd(const EditTarget& target, const ProcedureText& text,
                                 const ProcedureText::Part& part, std::string_view harm) {
    const auto body = text.body(part);
    if (body.empty()) {
        return Skip{SkipReason::EmptyBody, part.lines.begin,
                    "its body at " + target.Place(part.lines.begin) + " has no lines; " + std::string(harm)};
    }
    if (workspace::Continues(body.back())) {
        return Skip{SkipReason::RangeMismatch, part.body.end - 1,
                    target.Place(part.body.end - 1) + " is a part of the statement that closes it"};
    }
    return std::nullopt;
}

std::optional<Skip> CheckDirectivesThatGo(const EditTarget& target, std::span<const Text> lines, Line first,
                                          std::string_view what) {
    const auto unbalanced = FindUnbalancedDirective(lines);
    if (!unbalanced) {
        return std::nullopt;
    }
    const Line line = first + static_cast<std::int32_t>(unbalanced->line);
    return Skip{SkipReason::MarkerMismatch, line,
                "the " + std::string(NameOf(unbalanced->directive)) + " at " + target.Place(line) +
                    " would go with " + std::string(what) + ", but its " +
                    (unbalanced->directive == Directive::If ? "#End If" : "#If") + " would stay"};
}

std::optional<Skip> CheckCrowdedLines(const EditTarget& target, const ProcedureText& text, TextView from) {
    const Text sought = Text(constants::CommittedOnErrorGoTo).append(from);
    for (const ProcedureText::Part& part : text.parts()) {
        if (const auto crowded = FindCrowdedLine(text.body(part), sought)) {
            const Line line = part.body.begin + static_cast<std::int32_t>(*crowded);
            return Skip{SkipReason::CrowdedLine, line,
                        target.Place(line) + " has " + std::to_string(text.body(part)[*crowded].size()) +
                            " characters and too many \"" + Printable(sought) +
                            "\" among them to change them all; split it"};
        }
    }
    return std::nullopt;
}

void RequireNoCrowdedLine(const EditTarget& target, const ProcedureGroup& group, const ProcedureText& text,
                          TextView from) {
    if (const auto skip = CheckCrowdedLines(target, text, from)) {
        throw Refusal(std::string(KindWord(group)) + " " + Printable(group.name) + " in " +
                      Printable(target.component.name) + ": " + skip->message +
                      ", or leave it out with --exclude");
    }
}

}  // namespace lintara::cli
