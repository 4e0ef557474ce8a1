#include "cli/edits/custom_code_insertion.h"

#include "base/numbers.h"
#include "base/statement.h"
#include "cli/edits/handler_block.h"
#include "cli/edits/refusal.h"
#include "cli/guards/inserted_code.h"
#include "cli/guards/labels.h"
#include "cli/output/terminal_text.h"
#include "workspace/component_file.h"
#include "workspace/encoding.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <iterator>

namespace lintara::cli {
namespace {

using transform::CodePlace;

constexpr std::int32_t MarkerLines = 2;

std::string Describe(const ProcedureGroup& group) {
    return std::string(KindWord(group)) + " " + Printable(group.name);
}

}  // namespace

Text MarkerNumber(std::int16_t id) {
    Text number;
    AppendDecimal(number, id);
    return number;
}

CustomCodeInsertion::CustomCodeInsertion(CustomCodeOptions block)
    : block_(std::move(block)),
      number_(MarkerNumber(block_.id)),
      hasPlaceholders_(block_.code.contains(u'{')),
      lines_(SplitLines(block_.code)),
      labels_(LabelsIn(lines_)) {}

std::expected<bool, Skip> CustomCodeInsertion::Apply(const EditTarget& target, const ProcedureGroup& group,
                                                     ComponentReport& report) {
    if (auto skip = Check(target, group)) {
        return std::unexpected(*std::move(skip));
    }
    std::vector<Remark> remarks = Remarks(target);
    std::optional<Remark> onHandler = RemarkOnHandler(target);
    const std::size_t procedures = target.module.CountOfProcedures();
    const std::int32_t lines = target.module.CountOfLines();
    Insert(target, group);
    if (!IsAsForeseen(target, group, procedures)) {
        return std::unexpected(Withdraw(target, group, lines));
    }
    std::ranges::move(remarks, std::back_inserter(report.remarks));
    if (onHandler) {
        AddToHandlers(*std::move(onHandler), report);
    }
    return true;
}

bool CustomCodeInsertion::ApplyExactly(const EditTarget& target, const ProcedureGroup& group) {
    const std::int32_t lines = target.module.CountOfLines();
    Insert(target, group);
    return target.module.CountOfLines() != lines;
}

bool CustomCodeInsertion::HasWork(const workspace::Module& module,
                                  const workspace::ProcedureInfo& procedure) const {
    if (block_.noMarkers) {
        return true;
    }
    std::vector<Text> lines;
    for (Line at = procedure.body().begin; at < procedure.body().end; ++at) {
        module.ReadLine(at, lines.emplace_back());
    }
    return std::ranges::none_of(FindCustomCodeMarkers(lines),
                                [&](const CustomCodeMarker& marker) { return marker.id == number_; });
}

void CustomCodeInsertion::Insert(const EditTarget& target, const ProcedureGroup& group) const {
    target.lintara.CustomCodeInserter(target.project.name(), target.component.name, group.name, block_.code,
                                      block_.noMarkers, static_cast<std::int16_t>(block_.where), block_.line,
                                      block_.id);
}

std::optional<Skip> CustomCodeInsertion::Check(const EditTarget& target, const ProcedureGroup& group) {
    if (auto skip = CheckRanges(target, group)) {
        return skip;
    }
    text_.Read(target.module, group);
    parts_ = text_.parts();
    std::ranges::sort(parts_, {}, [](const Part& part) { return part.body.begin; });
    for (const Part& part : parts_) {
        if (part.body.count() == 0) {
            return Skip{SkipReason::EmptyBody, part.lines.begin,
                        "its body at " + target.Place(part.lines.begin) + " has no lines"};
        }
        if (auto skip = CheckMarkers(target, part)) {
            return skip;
        }
        if (auto skip = CheckPlace(target, part)) {
            return skip;
        }
    }
    auto skip = CheckExpansion(target, group);
    for (auto part = parts_.begin(); !skip && part != parts_.end(); ++part) {
        skip = CheckLabels(target, *part);
    }
    return skip;
}

std::optional<Skip> CustomCodeInsertion::CheckMarkers(const EditTarget& target, const Part& part) const {
    if (block_.noMarkers) {
        return std::nullopt;
    }
    const auto markers = FindCustomCodeMarkers(text_.body(part));
    const auto own = std::ranges::find(markers, number_, &CustomCodeMarker::id);
    if (own == markers.end()) {
        return std::nullopt;
    }
    const Line line = part.body.begin + static_cast<std::int32_t>(own->line);
    return Skip{SkipReason::AlreadyInserted, line,
                "it has block " + workspace::ToUtf8(number_) + " already, at " + target.Place(line)};
}

std::optional<Skip> CustomCodeInsertion::CheckPlace(const EditTarget& target, const Part& part) const {
    const Line place = PlaceIn(part);
    if (place > part.body.end) {
        return Skip{SkipReason::OutsideBody, part.lines.begin,
                    "--line " + std::to_string(block_.line) + " lies behind its end; its body has " +
                        std::to_string(part.body.count()) + (part.body.count() == 1 ? " line" : " lines")};
    }
    const auto above = static_cast<std::size_t>(place - part.lines.begin) - 1;
    if (workspace::Continues(text_.lines(part)[above])) {
        return Skip{SkipReason::OutsideBody, place - 1,
                    "the block would split the statement that " + target.Place(place - 1) + " continues"};
    }
    return std::nullopt;
}

std::optional<Skip> CustomCodeInsertion::CheckExpansion(const EditTarget& target,
                                                        const ProcedureGroup& group) {
    if (!hasPlaceholders_) {
        return std::nullopt;
    }
    const Text code = target.lintara.ParsePseudoCodeEx(block_.code, target.component.name, group.name);
    lines_ = SplitLines(code);
    labels_ = LabelsIn(lines_);
    if (const auto objection = ObjectionToCode(code)) {
        return Skip{SkipReason::BreaksProcedure, group.reached.front().header,
                    "of the code as it would be inserted here, " + *objection};
    }
    return std::nullopt;
}

std::optional<Skip> CustomCodeInsertion::CheckLabels(const EditTarget& target, const Part& part) const {
    for (const Text& label : labels_) {
        if (const auto found = FindLabel(text_.body(part), label)) {
            const Line line = part.body.begin + static_cast<std::int32_t>(*found);
            return Skip{SkipReason::LabelExists, line,
                        target.Place(line) + " has the label " + Printable(label) + " already"};
        }
    }
    return std::nullopt;
}

Line CustomCodeInsertion::PlaceIn(const Part& part) const {
    switch (block_.where) {
        case CodePlace::AfterFirstLine:
            return part.body.begin;
        case CodePlace::BeforeLastLine:
            return part.body.end;
        case CodePlace::AtLine:
            break;
    }
    // A line behind the end is as good as the next one there.
    return part.body.begin + (std::min(block_.line, part.body.count() + 2) - 1);
}

std::int32_t CustomCodeInsertion::BlockSize() const {
    return static_cast<std::int32_t>(lines_.size()) + (block_.noMarkers ? 0 : MarkerLines);
}

bool CustomCodeInsertion::IsAsForeseen(const EditTarget& target, const ProcedureGroup& group,
                                       std::size_t proceduresBefore) const {
    if (target.module.CountOfProcedures() != proceduresBefore) {
        return false;
    }
    const std::int32_t size = BlockSize();
    return std::ranges::all_of(group.reached, [&](const workspace::ProcedureInfo& before) {
        const workspace::ProcedureInfo now = target.module.Procedure(before.number);
        const auto above = static_cast<std::int32_t>(std::ranges::count_if(
            parts_, [&](const Part& part) { return part.lines.begin < before.header; }));
        return now.name == before.name && now.kind == before.kind && now.closed == before.closed &&
               now.header == before.header + above * size &&
               now.closing == before.closing + (above + 1) * size;
    });
}

Skip CustomCodeInsertion::Withdraw(const EditTarget& target, const ProcedureGroup& group,
                                   std::int32_t linesBefore) const {
    workspace::Module& module = target.module;
    const Line header = parts_.front().lines.begin;
    if (module.CountOfLines() == linesBefore) {
        return {SkipReason::RangeMismatch, header,
                "its first line counts among the declarations; nothing was inserted"};
    }
    const std::int32_t size = BlockSize();
    auto shift = static_cast<std::int32_t>(parts_.size()) * size;
    bool complete = module.CountOfLines() == linesBefore + shift;
    for (auto part = parts_.rbegin(); complete && part != parts_.rend(); ++part) {
        shift -= size;
        const Line begin = PlaceIn(*part) + shift;
        for (Line line = begin; line < begin + size; ++line) {
            complete &= module.OriginOf(line) == Line(0);
        }
        complete = complete && module.DeleteLines(begin, size).has_value();
    }
    if (!complete) {
        throw Refusal(Describe(group) + " in " + Printable(target.component.name) +
                      ": the code did not go where it belongs");
    }
    return {SkipReason::BreaksProcedure, header, "with the code in it, it would end somewhere else"};
}

std::vector<Remark> CustomCodeInsertion::Remarks(const EditTarget& target) const {
    std::vector<Remark> remarks;
    for (std::size_t i = 0; i < lines_.size(); ++i) {
        if (lines_[i].size() > workspace::longestLine) {
            const Line line = PlaceIn(parts_.front());
            remarks.push_back({"line-too-long", target.Input(line),
                               "line " + std::to_string(i + 1) + " of the code inserted at " +
                                   target.Place(line) + " has " + std::to_string(lines_[i].size()) +
                                   " characters; the IDE accepts " + std::to_string(workspace::longestLine)});
        }
    }
    for (const Part& part : parts_) {
        if (auto remark = RemarkOnOtherBlock(target, part)) {
            remarks.push_back(*std::move(remark));
        }
    }
    return remarks;
}

std::optional<Remark> CustomCodeInsertion::RemarkOnHandler(const EditTarget& target) const {
    for (const Part& part : parts_) {
        const auto handler = FindHandlerBlock(text_.body(part));
        if (!handler) {
            continue;
        }
        const Line marker = part.body.begin + static_cast<std::int32_t>(handler->begin);
        if (PlaceIn(part) > marker) {
            return Remark{"inside-handler", target.Input(marker),
                          "the code stands inside the error handler that begins at " + target.Place(marker) +
                              ": it runs only after an error, and goes when the handler goes"};
        }
    }
    return std::nullopt;
}

// One remark tells of all procedures of a component.
void CustomCodeInsertion::AddToHandlers(Remark remark, ComponentReport& report) {
    const auto earlier = std::ranges::find(report.remarks, remark.code, &Remark::code);
    if (earlier == report.remarks.end()) {
        handlers_ = 1;
        handlerMessage_ = remark.message;
        report.remarks.push_back(std::move(remark));
        return;
    }
    earlier->message =
        handlerMessage_ + " (the same in " + std::to_string(handlers_++) + " more below it in the component)";
}

// Removal of one of two such blocks depends on which comes first.
std::optional<Remark> CustomCodeInsertion::RemarkOnOtherBlock(const EditTarget& target,
                                                              const Part& part) const {
    if (block_.noMarkers) {
        return std::nullopt;
    }
    const auto markers = FindCustomCodeMarkers(text_.body(part));
    const auto other = std::ranges::find_if(markers, [&](const CustomCodeMarker& marker) {
        return IsTakenFor(marker, number_) || number_.starts_with(marker.id);
    });
    if (other == markers.end()) {
        return std::nullopt;
    }
    const std::string own = workspace::ToUtf8(number_);
    const std::string id = workspace::ToUtf8(other->id);
    return Remark{
        "marker-prefix", target.Input(PlaceIn(part)),
        "blocks " + own + " and " + id +
            " stand in one procedure now, and one number begins like the other: removal finds block " +
            (own.size() < id.size() ? own : id) + " only while it comes first"};
}

}  // namespace lintara::cli
