#include "cli/edits/number_removal.h"

#include "cli/guards/jump_targets.h"
#include "cli/guards/range_guard.h"
#include "cli/output/terminal_text.h"

#include <algorithm>

namespace lintara::cli {
namespace {

std::optional<Skip> CheckWidth(const EditTarget& target, const ProcedureText::Part& part,
                               const std::vector<NumberedLine>& numbered) {
    const auto odd = std::ranges::find(numbered, -1, &NumberedLine::number);
    if (odd == numbered.end()) {
        return std::nullopt;
    }
    const Line line = part.body.begin + static_cast<std::int32_t>(odd->index);
    return Skip{SkipReason::NumberWidth, line,
                "the number of " + target.Place(line) +
                    " is not five digits, a colon and a blank; seven characters would be taken off"};
}

std::optional<Skip> CheckJumps(const EditTarget& target, const ProcedureText& text,
                               const ProcedureText::Part& part, const std::vector<NumberedLine>& numbered) {
    if (numbered.empty()) {
        return std::nullopt;
    }
    const auto [lowest, highest] = std::ranges::minmax(numbered, {}, &NumberedLine::number);
    for (const Jump& jump : FindJumps(text.lines(part), lowest.number, highest.number)) {
        if (std::ranges::find(numbered, jump.number, &NumberedLine::number) != numbered.end()) {
            const Line line = part.lines.begin + static_cast<std::int32_t>(jump.line);
            return Skip{SkipReason::JumpTarget, line,
                        target.Place(line) + " jumps to the number " + std::to_string(jump.number)};
        }
    }
    return std::nullopt;
}

// "5, 7 to 9"; `lines` go up.
std::string Listed(std::span<const Line> lines) {
    std::string list;
    for (std::size_t i = 0; i < lines.size();) {
        std::size_t last = i;
        while (last + 1 < lines.size() && lines[last + 1] == lines[last] + 1) {
            ++last;
        }
        list += (list.empty() ? "" : ", ") + std::to_string(lines[i].value());
        if (last > i) {
            list += " to " + std::to_string(lines[last].value());
        }
        i = last + 1;
    }
    return list;
}

Remark KeptRemark(const EditTarget& target, const workspace::ProcedureInfo& procedure,
                  const ProcedureText::Part& part, std::span<const std::size_t> indexes) {
    std::vector<Line> lines;
    for (const std::size_t index : indexes) {
        lines.push_back(target.Input(part.body.begin + static_cast<std::int32_t>(index)));
    }
    const bool one = lines.size() == 1;
    return {"kept-blanks", lines.front(),
            std::string(KindWord(procedure)) + " " + Printable(procedure.name) +
                " has too few numbers to tell that " + (one ? "line " : "lines ") + Listed(lines) +
                ", which " + (one ? "has" : "have") + " none, " + (one ? "was" : "were") + " shifted; " +
                (one ? "it keeps its blanks" : "they keep their blanks")};
}

}  // namespace

std::expected<bool, Skip> NumberRemoval::Apply(const EditTarget& target, const ProcedureGroup& group,
                                               ComponentReport& report) {
    text_.Read(target.module, group);
    if (!FindNumbers(text_)) {
        return false;
    }
    if (auto skip = CheckRanges(target, group, text_)) {
        return std::unexpected(*std::move(skip));
    }
    return RemoveFrom(target, group, text_, report.remarks);
}

bool NumberRemoval::ApplyExactly(const EditTarget& target, const ProcedureGroup& group) {
    text_.Read(target.module, RangesToVisit(target.RangesOf(group)));
    target.lintara.LineNumbersRemover(target.project.name(), target.component.name, group.name);
    return text_.Differs(target.module);
}

bool NumberRemoval::HasWork(const workspace::Module& module,
                            const workspace::ProcedureInfo& procedure) const {
    Text line;
    for (Line at = procedure.body().begin; at < procedure.body().end; ++at) {
        module.ReadLine(at, line);
        if (FiveDigitNumber(line)) {
            return true;
        }
    }
    return false;
}

std::expected<bool, Skip> NumberRemoval::RemoveFrom(const EditTarget& target, const ProcedureGroup& group,
                                                    const ProcedureText& text, std::vector<Remark>& remarks) {
    if (!FindNumbers(text)) {
        return false;
    }
    if (auto skip = CheckNumbers(target, text)) {
        return std::unexpected(*std::move(skip));
    }
    target.lintara.LineNumbersRemover(target.project.name(), target.component.name, group.name);
    PutBackOthers(target, group, text, remarks);
    return true;
}

bool NumberRemoval::FindNumbers(const ProcedureText& text) {
    bool any = false;
    for (std::size_t i = 0; i < text.parts().size(); ++i) {
        numbered_[i].clear();
        FindNumberedLines(text.body(text.parts()[i]), numbered_[i]);
        any |= !numbered_[i].empty();
    }
    return any;
}

std::optional<Skip> NumberRemoval::CheckNumbers(const EditTarget& target, const ProcedureText& text) const {
    for (std::size_t i = 0; i < text.parts().size(); ++i) {
        const ProcedureText::Part& part = text.parts()[i];
        if (auto skip = CheckWidth(target, part, numbered_[i])) {
            return skip;
        }
        if (auto skip = CheckJumps(target, text, part, numbered_[i])) {
            return skip;
        }
    }
    return std::nullopt;
}

void NumberRemoval::PutBackOthers(const EditTarget& target, const ProcedureGroup& group,
                                  const ProcedureText& text, std::vector<Remark>& remarks) {
    for (std::size_t i = 0; i < text.parts().size(); ++i) {
        const ProcedureText::Part& part = text.parts()[i];
        if (numbered_[i].empty()) {
            // The library takes text that looks like a number for one.
            if (FindNumericLabel(text.body(part))) {
                text.PutBack(target.module, part);
            }
            continue;
        }
        FindLinesToKeep(text.body(part), numbered_[i], kept_);
        for (const std::size_t index : kept_.all) {
            text.PutBack(target.module, part, index);
        }
        PutBackInserted(target, text, part);
        if (!kept_.unnumbered.empty()) {
            remarks.push_back(KeptRemark(target, group.reached[i], part, kept_.unnumbered));
        }
    }
}

// A handler that came ahead of this has no numbers yet, and was never shifted.
void NumberRemoval::PutBackInserted(const EditTarget& target, const ProcedureText& text,
                                    const ProcedureText::Part& part) {
    const auto body = text.body(part);
    for (std::size_t i = 0; i < body.size(); ++i) {
        const Line line = part.body.begin + static_cast<std::int32_t>(i);
        if (body[i].starts_with(u' ') && target.module.OriginOf(line) == Line(0)) {
            text.PutBack(target.module, part, i);
        }
    }
}

}  // namespace lintara::cli
