#include "cli/edits/handler_insertion.h"

#include "base/constants.h"
#include "base/statement.h"
#include "cli/edits/refusal.h"
#include "cli/guards/existing_numbers.h"
#include "cli/guards/inserted_code.h"
#include "cli/guards/labels.h"
#include "cli/guards/range_guard.h"
#include "cli/guards/redirected_lines.h"
#include "cli/output/terminal_text.h"
#include "workspace/characters.h"
#include "workspace/component_file.h"
#include "workspace/encoding.h"
#include "workspace/syntax.h"

#include <algorithm>

namespace lintara::cli {
namespace {

constexpr std::size_t CodeLine = 3;

Line At(const ProcedureText::Part& part, std::size_t index) {
    return part.body.begin + static_cast<std::int32_t>(index);
}

bool IsHandled(const std::optional<HandlerBlock>& block) {
    return block.has_value();
}

// Whether the line's first statement leads to the label.
bool LeadsTo(TextView line, TextView label) {
    const std::vector<TextView> statements =
        workspace::SplitStatements(line.substr(workspace::SkipLineNumberAndLabel(line)));
    return !statements.empty() &&
           workspace::SameName(statements.front(), Text(constants::CommittedOnErrorGoTo).append(label));
}

void Restore(workspace::Module& module, Line line, TextView text) {
    Text current;
    module.ReadLine(line, current);
    if (current != text) {
        Attempt(module.RestoreLine(line, text));
    }
}

}  // namespace

std::expected<bool, Skip> HandlerInsertion::Apply(const EditTarget& target, const ProcedureGroup& group,
                                                  ComponentReport& report) {
    if (auto skip = CheckRanges(target, group)) {
        return std::unexpected(*std::move(skip));
    }
    text_.Read(target.module, group);
    blocks_ = HandlerRemoval::FindBlocks(text_);
    if (auto skip = CheckBodies(target)) {
        return std::unexpected(*std::move(skip));
    }
    const bool all = std::ranges::all_of(blocks_, IsHandled);
    if (all && !refresh_.wanted) {
        return false;
    }
    block_ = WantedBlock(target, group, wanted_);
    if (refresh_.wanted && IsOutOfDate()) {
        return Replace(target, group, report);
    }
    if (all) {
        return false;
    }
    if (auto skip = Check(target, group)) {
        return std::unexpected(*std::move(skip));
    }
    replacing_ = false;
    return Insert(target, group, report);
}

bool HandlerInsertion::ApplyExactly(const EditTarget& target, const ProcedureGroup& group) {
    text_.Read(target.module, RangesToVisit(target.RangesOf(group)));
    const std::int32_t lines = target.module.CountOfLines();
    const Text& project = target.project.name();
    const Text& component = target.component.name;
    if (refresh_.wanted) {
        settings_->SetLabel(wanted_.label);
        target.lintara.ErrorHandlerRemover(project, component, group.name);
    }
    target.lintara.ErrorHandlerInserter(project, component, group.name, wanted_.label, wanted_.code);
    return target.module.CountOfLines() != lines || text_.Differs(target.module);
}

bool HandlerInsertion::HasWork(const workspace::Module& module,
                               const workspace::ProcedureInfo& procedure) const {
    return procedure.body().count() > 0 && !removal_.HasWork(module, procedure);
}

bool HandlerInsertion::IsOutOfDate() const {
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
        if (blocks_[i] &&
            FindHandlerChange(text_.body(text_.parts()[i]).subspan(blocks_[i]->begin), block_)) {
            return true;
        }
    }
    return false;
}

std::optional<Skip> HandlerInsertion::CheckBodies(const EditTarget& target) const {
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
        const Part& part = text_.parts()[i];
        const auto body = text_.body(part);
        if (body.empty()) {
            return Skip{SkipReason::EmptyBody, part.lines.begin,
                        "its body at " + target.Place(part.lines.begin) +
                            " has no lines; the search for a handler would go on in later procedures"};
        }
        if (workspace::Continues(body.back())) {
            return Skip{SkipReason::RangeMismatch, part.body.end - 1,
                        target.Place(part.body.end - 1) + " is a part of the statement that closes it"};
        }
        if (blocks_[i] && !blocks_[i]->alone) {
            const Line line = At(part, blocks_[i]->begin);
            return Skip{SkipReason::MarkerMismatch, line,
                        target.Place(line) + " holds the text of a handler's marker, but begins no handler"};
        }
    }
    return std::nullopt;
}

std::optional<Skip> HandlerInsertion::Check(const EditTarget& target, const ProcedureGroup& group) const {
    if (auto skip = CheckBlock(group)) {
        return skip;
    }
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
        const Part& part = text_.parts()[i];
        if (!blocks_[i]) {
            if (auto skip = CheckLabels(target, part, text_.body(part))) {
                return skip;
            }
        }
    }
    return std::nullopt;
}

std::optional<Skip> HandlerInsertion::CheckBlock(const ProcedureGroup& group) const {
    const Line header = group.reached.front().header;
    Text code;
    for (const Text& line : std::span(block_).subspan(CodeLine)) {
        code.append(code.empty() ? TextView() : constants::LineBreak).append(line);
    }
    if (const auto objection = ObjectionToCode(code)) {
        return Skip{SkipReason::BreaksProcedure, header,
                    "of the template as it would be inserted here, " + *objection};
    }
    return std::nullopt;
}

std::optional<Skip> HandlerInsertion::CheckLabels(const EditTarget& target, const Part& part,
                                                  std::span<const Text> body) const {
    std::vector<Text> labels = LabelsIn(std::span(block_).subspan(CodeLine));
    labels.push_back(wanted_.label);
    for (const Text& label : labels) {
        if (const auto found = FindLabel(body, label)) {
            const Line line = At(part, *found);
            return Skip{SkipReason::LabelExists, line,
                        target.Place(line) + " has the label " + Printable(label) + " already"};
        }
    }
    for (const TextView sought : {TextView(wanted_.label), constants::NoErrorHandler}) {
        if (const auto longer = FindLongerTarget(body, sought)) {
            const Line line = At(part, *longer);
            return Skip{SkipReason::LabelPrefix, line,
                        target.Place(line) + " leads to a target that only begins like " + Printable(sought) +
                            ", and would be changed, too"};
        }
    }
    return std::nullopt;
}

std::vector<Remark> HandlerInsertion::Remarks(const EditTarget& target) const {
    std::vector<Remark> remarks;
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
        const Part& part = text_.parts()[i];
        if (blocks_[i]) {
            continue;
        }
        if (const auto other = FindOtherTarget(text_.body(part), wanted_.label)) {
            const Line line = At(part, *other);
            remarks.push_back({"other-handler", target.Input(line),
                               target.Place(line) + " leads errors to another handler; from there on the "
                                                    "inserted one is not reached"});
        }
    }
    return remarks;
}

std::expected<bool, Skip> HandlerInsertion::Insert(const EditTarget& target, const ProcedureGroup& group,
                                                   ComponentReport& report) {
    workspace::Module& module = target.module;
    std::vector<Remark> remarks = Remarks(target);
    const std::size_t procedures = module.CountOfProcedures();
    linesBefore_ = module.CountOfLines();
    closings_.clear();
    for (const Part& part : text_.parts()) {
        closings_.push_back(module.OriginOf(part.body.end));
    }
    target.lintara.ErrorHandlerInserter(target.project.name(), target.component.name, group.name,
                                        wanted_.label, wanted_.code);
    ProcedureGroup now = group;
    if (!IsAsForeseen(target, now, procedures)) {
        Withdraw(target, group);
        return std::unexpected(Skip{SkipReason::BreaksProcedure, text_.parts().front().lines.begin,
                                    "with the handler in it, it would end somewhere else"});
    }
    std::ranges::move(remarks, std::back_inserter(report.remarks));
    Refresh(now, module);
    Settle(target, now, report);
    return true;
}

std::expected<bool, Skip> HandlerInsertion::Replace(const EditTarget& target, const ProcedureGroup& group,
                                                    ComponentReport& report) {
    numbersOut_ = false;
    auto label = LabelOfBlocks(target);
    if (!label) {
        return std::unexpected(label.error());
    }
    if (auto skip = TakeNumbersOut(target, group)) {
        return std::unexpected(*std::move(skip));
    }
    const auto giveUp = [&](Skip skip) {
        if (numbersOut_) {
            numbered_.PutBackAll(target.module);
        }
        return std::unexpected(std::move(skip));
    };
    auto skip = HandlerRemoval::Check(target, text_, blocks_, *label, wanted_.label);
    for (std::size_t i = 0; !skip && i < blocks_.size(); ++i) {
        const Part& part = text_.parts()[i];
        const auto body = text_.body(part).first(blocks_[i] ? blocks_[i]->begin : text_.body(part).size());
        if (const auto foreign = FindForeignNumber(text_.body(part))) {
            const Line line = At(part, *foreign);
            skip = Skip{SkipReason::ForeignNumbers, line,
                        target.Place(line) + " has a number that another tool wrote; remove it there first"};
        } else if (body.empty()) {
            skip = Skip{SkipReason::EmptyBody, part.lines.begin,
                        "its body at " + target.Place(part.lines.begin) + " has no lines but the handler"};
        } else {
            skip = CheckLabels(target, part, body);
        }
    }
    if (!skip) {
        skip = CheckBlock(group);
    }
    if (skip) {
        return giveUp(*std::move(skip));
    }
    removal_.Remove(target, group, text_, blocks_, *label);
    const ProcedureText before = text_;
    const Blocks removed = blocks_;
    ProcedureGroup now = group;
    Refresh(now, target.module);
    text_.Read(target.module, now);
    blocks_.assign(text_.parts().size(), std::nullopt);
    replacing_ = true;
    auto inserted = Insert(target, now, report);
    if (!inserted) {
        HandlerRemoval::PutBack(target, before, removed);
        return giveUp(inserted.error());
    }
    return inserted;
}

std::optional<Skip> HandlerInsertion::TakeNumbersOut(const EditTarget& target, const ProcedureGroup& group) {
    std::optional<Line> line;
    for (const Part& part : text_.parts()) {
        if (const auto numbered = FindNumericLabel(text_.body(part)); numbered && !line) {
            line = At(part, *numbered);
        }
    }
    if (!line) {
        return std::nullopt;
    }
    if (!refresh_.numbersToo) {
        return Skip{
            SkipReason::AlreadyNumbered, *line,
            target.Place(*line) + " has a number; give --line-numbers, too, to replace handler and numbers"};
    }
    std::swap(numbered_, text_);
    if (const auto removed = numberRemoval_.RemoveFrom(target, group, numbered_); !removed) {
        return removed.error();
    }
    numbersOut_ = true;
    text_.Read(target.module, group);
    blocks_ = HandlerRemoval::FindBlocks(text_);
    return std::nullopt;
}

std::expected<Text, Skip> HandlerInsertion::LabelOfBlocks(const EditTarget& target) const {
    Text label;
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
        if (!blocks_[i] || blocks_[i]->label.empty()) {
            continue;
        }
        if (!label.empty() && !workspace::SameName(label, blocks_[i]->label)) {
            const Line line = At(text_.parts()[i], blocks_[i]->begin);
            return std::unexpected(Skip{SkipReason::LabelMismatch, line,
                                        "its handlers have different labels: " + Printable(label) +
                                            ", and at " + target.Place(line) + " " +
                                            Printable(blocks_[i]->label)});
        }
        label = blocks_[i]->label;
    }
    return label.empty() ? wanted_.label : label;
}

// How many lines stand in front of those that the body had: 1 when the statement that leads to the label was
// inserted.
std::int32_t HandlerInsertion::FirstLines(const Part& part, const workspace::ProcedureInfo& now) const {
    const std::int32_t added = now.body().count() - part.body.count();
    return added == static_cast<std::int32_t>(block_.size()) ? 0 : 1;
}

bool HandlerInsertion::IsAsForeseen(const EditTarget& target, const ProcedureGroup& group,
                                    std::size_t proceduresBefore) const {
    const workspace::Module& module = target.module;
    if (module.CountOfProcedures() != proceduresBefore) {
        return false;
    }
    ProcedureGroup now = group;
    Refresh(now, module);
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
        const Part& part = text_.parts()[i];
        const workspace::ProcedureInfo& procedure = now.reached[i];
        std::int32_t added = 0;
        if (!blocks_[i]) {
            added = static_cast<std::int32_t>(block_.size()) + FirstLines(part, procedure);
        }
        if (!procedure.closed || procedure.body().count() != part.body.count() + added) {
            return false;
        }
    }
    return !CheckRanges(target, now);
}

// Puts right what the library's search for texts did to the lines that were there.
void HandlerInsertion::Settle(const EditTarget& target, const ProcedureGroup& group,
                              ComponentReport& report) const {
    workspace::Module& module = target.module;
    ProcedureGroup now = group;
    Text line;
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
        if (blocks_[i]) {
            continue;
        }
        const Line begin = now.reached[i].bodyBegin;
        const std::int32_t first = FirstLines(text_.parts()[i], now.reached[i]);
        for (const RedirectedLine& redirected :
             RedirectLines(text_.body(text_.parts()[i]), constants::NoErrorHandler, wanted_.label)) {
            Restore(module, begin + first + static_cast<std::int32_t>(redirected.index), redirected.text);
        }
        RemarkLongLines(target, now.reached[i], report);
        // A handler that was there before has left its statement.
        module.ReadLine(begin + first, line);
        if (replacing_ && first == 1 && LeadsTo(line, wanted_.label)) {
            Attempt(module.DeleteLines(begin, 1));
            Refresh(now, module);
        }
    }
}

void HandlerInsertion::RemarkLongLines(const EditTarget& target, const workspace::ProcedureInfo& procedure,
                                       ComponentReport& report) const {
    Text line;
    const Line block = procedure.closing - static_cast<std::int32_t>(block_.size());
    for (Line at = block; at < procedure.closing; ++at) {
        target.module.ReadLine(at, line);
        if (line.size() > workspace::longestLine) {
            report.remarks.push_back(
                {"line-too-long", target.Input(at),
                 "line " + std::to_string(at - block - static_cast<std::int32_t>(CodeLine) + 1) +
                     " of the template, inserted above " + target.Place(at) + ", has " +
                     std::to_string(line.size()) + " characters; the IDE accepts " +
                     std::to_string(workspace::longestLine)});
        }
    }
}

// What was inserted goes: all lines of the parts that were not there before.
void HandlerInsertion::Withdraw(const EditTarget& target, const ProcedureGroup& group) const {
    workspace::Module& module = target.module;
    std::vector<std::pair<Line, Line>> parts;  // where each begins, and its closing line in the input
    for (std::size_t i = 0; i < text_.parts().size(); ++i) {
        parts.emplace_back(text_.parts()[i].lines.begin, closings_[i]);
    }
    std::ranges::sort(parts);
    for (const auto& [begin, closing] : parts) {
        Line line = begin;
        while (line <= Line(module.CountOfLines()) && module.OriginOf(line) != closing) {
            if (module.OriginOf(line) != Line(0) || !module.DeleteLines(line, 1)) {
                ++line;
            }
        }
    }
    if (module.CountOfLines() != linesBefore_) {
        throw Refusal(std::string(KindWord(group)) + " " + Printable(group.name) + " in " +
                      Printable(target.component.name) +
                      ": its error handler did not go where it belongs; leave it out with --exclude");
    }
    text_.PutBackAll(module);
}

}  // namespace lintara::cli
