#include "cli/edits/handler_removal.h"

#include "base/constants.h"
#include "base/statement.h"
#include "cli/edits/refusal.h"
#include "cli/guards/block_jumps.h"
#include "cli/guards/code_text.h"
#include "cli/guards/hidden_lines.h"
#include "cli/guards/range_guard.h"
#include "cli/guards/redirected_lines.h"
#include "cli/output/terminal_text.h"
#include "workspace/characters.h"
#include "workspace/syntax.h"

#include <algorithm>

namespace lintara::cli {
namespace {

using Part = ProcedureText::Part;
using Blocks = HandlerRemoval::Blocks;

constexpr std::size_t LabelLine = 2;

Line At(const Part& part, std::size_t index) {
    return part.body.begin + static_cast<std::int32_t>(index);
}

// The lines of the body above the block.
std::span<const Text> Kept(const ProcedureText& text, const Part& part,
                           const std::optional<HandlerBlock>& block) {
    const auto body = text.body(part);
    return block ? body.first(block->begin) : body;
}

bool IsHandled(const std::optional<HandlerBlock>& block) {
    return block.has_value();
}

std::optional<Skip> CheckMarker(const EditTarget& target, const Part& part, const HandlerBlock& block) {
    const Line marker = At(part, block.begin);
    if (!block.alone) {
        return Skip{
            SkipReason::MarkerMismatch, marker,
            target.Place(marker) + " holds more than the marker of a handler, which would go with it"};
    }
    if (HoldsHiddenLines(target.module, {marker, part.body.end})) {
        return Skip{SkipReason::HiddenLines, marker,
                    "the handler at " + target.Place(marker) +
                        " holds attribute lines that the IDE hides, which would go with it"};
    }
    return std::nullopt;
}

std::optional<Skip> CheckLabel(const EditTarget& target, const ProcedureText& text, const Part& part,
                               const HandlerBlock& block, TextView label) {
    if (!block.label.empty() && !workspace::SameName(block.label, label)) {
        const Line marker = At(part, block.begin);
        return Skip{SkipReason::LabelMismatch, marker,
                    "the handler at " + target.Place(marker) + " has the label " + Printable(block.label) +
                        ", not " + Printable(label) + "; give --label " + Printable(block.label)};
    }
    if (const auto longer = FindLongerTarget(text.body(part).first(block.begin), label)) {
        const Line line = At(part, *longer);
        return Skip{SkipReason::LabelPrefix, line,
                    target.Place(line) + " leads to a label that only begins like " + Printable(label) +
                        ", and would be changed, too"};
    }
    return std::nullopt;
}

// Jumps that stay, to labels and numbers that go.
std::optional<Skip> CheckJumps(const EditTarget& target, const ProcedureText& text, const Part& part,
                               const HandlerBlock& block, TextView label, TextView returning) {
    const auto lines = text.lines(part);
    const auto above = static_cast<std::size_t>(part.body.begin - part.lines.begin);
    const std::size_t begin = above + block.begin;
    std::vector<Text> after(lines.begin(), lines.end());
    const auto kept = text.body(part).first(block.begin);
    for (RedirectedLine& line : RedirectLines(kept, label, constants::NoErrorHandler)) {
        after[above + line.index] = std::move(line.text);
    }
    if (workspace::SameName(block.label, returning) && begin + LabelLine < lines.size()) {
        after[begin + LabelLine].clear();
    }
    const auto jump = FindJumpIntoBlock(after, begin, begin + text.body(part).size() - block.begin);
    if (!jump) {
        return std::nullopt;
    }
    const Line line = part.lines.begin + static_cast<std::int32_t>(jump->line);
    return Skip{
        SkipReason::JumpTarget, line,
        target.Place(line) + " jumps to " + Printable(jump->target) + " in the handler, which would go"};
}

// Where the block is first not what is wanted.
std::optional<Line> ChangeIn(const ProcedureText& text, std::size_t index, const HandlerBlock& block,
                             std::span<const Text> wanted) {
    const Part& part = text.parts()[index];
    const auto change = FindHandlerChange(text.body(part).subspan(block.begin), wanted);
    if (!change) {
        return std::nullopt;
    }
    return At(part, std::min(block.begin + *change, text.body(part).size() - 1));
}

Remark TypedRemark(const EditTarget& target, const ProcedureGroup& group, Line line) {
    return {"handler-edited", target.Input(line),
            "the error handler of " + std::string(KindWord(group)) + " " + Printable(group.name) +
                " was not what the label and the template give; what stood at " + target.Place(line) +
                " went with it"};
}

// The parts by their places in the module.
std::vector<std::size_t> FromTheTop(const ProcedureText& text) {
    std::vector<std::size_t> order;
    for (std::size_t i = 0; i < text.parts().size(); ++i) {
        order.push_back(i);
    }
    std::ranges::sort(order, {}, [&](std::size_t i) { return text.parts()[i].lines.begin; });
    return order;
}

}  // namespace

std::expected<bool, Skip> HandlerRemoval::Apply(const EditTarget& target, const ProcedureGroup& group,
                                                ComponentReport& report) {
    text_.Read(target.module, group);
    blocks_ = FindBlocks(text_);
    if (std::ranges::none_of(blocks_, IsHandled)) {
        return false;
    }
    auto skip = CheckRanges(target, group, text_);
    if (!skip) {
        skip = Check(target, text_, blocks_, wanted_.label, {});
    }
    if (skip) {
        return std::unexpected(*std::move(skip));
    }
    RemarkEdited(target, group, report);
    Remove(target, group, text_, blocks_, wanted_.label);
    return true;
}

bool HandlerRemoval::ApplyExactly(const EditTarget& target, const ProcedureGroup& group) {
    text_.Read(target.module, RangesToVisit(target.RangesOf(group)));
    RequireNoCrowdedLine(target, group, text_, wanted_.label);
    const std::int32_t lines = target.module.CountOfLines();
    settings_->SetLabel(wanted_.label);
    target.lintara.ErrorHandlerRemover(target.project.name(), target.component.name, group.name);
    return target.module.CountOfLines() != lines || text_.Differs(target.module);
}

bool HandlerRemoval::HasWork(const workspace::Module& module,
                             const workspace::ProcedureInfo& procedure) const {
    Text line;
    for (Line at = procedure.body().begin; at < procedure.body().end; ++at) {
        module.ReadLine(at, line);
        if (FindText(line, constants::ErrorHandlerBegin) != TextView::npos) {
            return true;
        }
    }
    return false;
}

Blocks HandlerRemoval::FindBlocks(const ProcedureText& text) {
    Blocks blocks;
    for (const Part& part : text.parts()) {
        blocks.push_back(FindHandlerBlock(text.body(part)));
    }
    return blocks;
}

std::optional<Skip> HandlerRemoval::Check(const EditTarget& target, const ProcedureText& text,
                                          const Blocks& blocks, TextView label, TextView returning) {
    if (auto skip = CheckCrowdedLines(target, text, label)) {
        return skip;
    }
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        const Part& part = text.parts()[i];
        auto skip = CheckBodyEnd(target, text, part, "handlers of later procedures could go in its place");
        if (!skip && blocks[i]) {
            skip = CheckMarker(target, part, *blocks[i]);
        }
        if (!skip && blocks[i]) {
            skip = CheckDirectivesThatGo(target, text.body(part).subspan(blocks[i]->begin),
                                         At(part, blocks[i]->begin), "the handler");
        }
        if (!skip && blocks[i]) {
            skip = CheckLabel(target, text, part, *blocks[i], label);
        }
        if (!skip && blocks[i]) {
            skip = CheckJumps(target, text, part, *blocks[i], label, returning);
        }
        if (skip) {
            return skip;
        }
    }
    return std::nullopt;
}

void HandlerRemoval::Remove(const EditTarget& target, const ProcedureGroup& group, const ProcedureText& text,
                            const Blocks& blocks, TextView label) const {
    const std::size_t procedures = target.module.CountOfProcedures();
    settings_->SetLabel(label);
    target.lintara.ErrorHandlerRemover(target.project.name(), target.component.name, group.name);
    if (target.module.CountOfProcedures() != procedures || !Settle(target, group, text, blocks, label)) {
        throw Refusal(std::string(KindWord(group)) + " " + Printable(group.name) + " in " +
                      Printable(target.component.name) +
                      ": more than its error handler would go; leave it out with --exclude");
    }
}

bool HandlerRemoval::Settle(const EditTarget& target, const ProcedureGroup& group, const ProcedureText& text,
                            const Blocks& blocks, TextView label) {
    std::int32_t gone = 0;
    Text current;
    for (const std::size_t i : FromTheTop(text)) {
        const Part& part = text.parts()[i];
        const auto kept = Kept(text, part, blocks[i]);
        const auto count = static_cast<std::int32_t>(kept.size());
        const workspace::ProcedureInfo now = target.module.Procedure(group.reached[i].number);
        if (now.bodyBegin != part.body.begin - gone || now.body().count() != count) {
            return false;
        }
        gone += part.body.count() - count;
        if (!blocks[i]) {
            continue;
        }
        for (const RedirectedLine& line : RedirectLines(kept, label, constants::NoErrorHandler)) {
            const Line at = now.bodyBegin + static_cast<std::int32_t>(line.index);
            target.module.ReadLine(at, current);
            if (current != line.text) {
                Attempt(target.module.RestoreLine(at, line.text));
            }
        }
    }
    return true;
}

void HandlerRemoval::PutBack(const EditTarget& target, const ProcedureText& text, const Blocks& blocks) {
    for (const std::size_t i : FromTheTop(text)) {
        const Part& part = text.parts()[i];
        if (!blocks[i]) {
            continue;
        }
        const auto body = text.body(part);
        Text block;
        for (const Text& line : body.subspan(blocks[i]->begin)) {
            block.append(block.empty() ? TextView() : constants::LineBreak).append(line);
        }
        Attempt(target.module.InsertLines(At(part, blocks[i]->begin), block));
        text.PutBack(target.module, part);
    }
}

void HandlerRemoval::RemarkEdited(const EditTarget& target, const ProcedureGroup& group,
                                  ComponentReport& report) {
    const std::vector<Text> wanted = WantedBlock(target, group, wanted_);
    for (std::size_t i = 0; i < blocks_.size(); ++i) {
        const auto change = blocks_[i] ? ChangeIn(text_, i, *blocks_[i], wanted) : std::nullopt;
        if (!change) {
            continue;
        }
        const auto block = text_.body(text_.parts()[i]).subspan(blocks_[i]->begin);
        const HandlerPeers::Shape& shape = peers_->ShapeOf(target, block, group.name);
        if (shape.count < 2) {
            report.remarks.push_back(TypedRemark(target, group, *change));
        } else if (told_.insert(&shape).second) {
            report.remarks.push_back(
                {"other-template", target.Input(*change),
                 std::to_string(shape.count) +
                     " error handlers of the project are alike, but not what the label and the template "
                     "give: they are from another template; one has " +
                     target.Place(*change),
                 &shape});
        }
    }
}

std::vector<Remark> HandlerRemoval::RemarksOnTyped(const EditTarget& target, const ProcedureGroup& group,
                                                   const ProcedureText& text, const Blocks& blocks) {
    std::vector<Text> wanted = WantedBlock(target, group, wanted_);
    std::vector<Remark> remarks;
    for (std::size_t i = 0; i < blocks.size(); ++i) {
        if (!blocks[i]) {
            continue;
        }
        // A label that changed is no reason to think of typing.
        wanted[LabelLine] = blocks[i]->label + u":";
        const auto change = ChangeIn(text, i, *blocks[i], wanted);
        const auto block = text.body(text.parts()[i]).subspan(blocks[i]->begin);
        if (change && peers_->ShapeOf(target, block, group.name).count < 2) {
            remarks.push_back(TypedRemark(target, group, *change));
        }
    }
    return remarks;
}

}  // namespace lintara::cli
