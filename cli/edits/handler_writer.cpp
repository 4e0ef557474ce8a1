#include "cli/edits/handler_writer.h"

#include "base/constants.h"
#include "base/statement.h"
#include "cli/edits/refusal.h"
#include "cli/guards/block_jumps.h"
#include "cli/guards/inserted_code.h"
#include "cli/guards/labels.h"
#include "cli/guards/redirected_lines.h"
#include "cli/output/terminal_text.h"
#include "workspace/component_file.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <iterator>

namespace lintara::cli {
namespace {

constexpr std::size_t CodeLine = 3;

Line At(const ProcedureText::Part& part, std::size_t index) {
    return part.body.begin + static_cast<std::int32_t>(index);
}

void Restore(workspace::Module& module, Line line, TextView text) {
    Text current;
    module.ReadLine(line, current);
    if (current != text) {
        Attempt(module.RestoreLine(line, text));
    }
}

}  // namespace

bool LeadsTo(TextView line, TextView label) {
    const std::vector<TextView> statements =
        workspace::SplitStatements(line.substr(workspace::SkipLineNumberAndLabel(line)));
    return !statements.empty() &&
           workspace::SameName(statements.front(), Text(constants::CommittedOnErrorGoTo).append(label));
}

void HandlerWriter::Begin(const EditTarget& target, const ProcedureGroup& group) {
    block_ = WantedBlock(target, group, wanted_);
}

std::optional<Skip> HandlerWriter::CheckCode(const ProcedureGroup& group) const {
    const Line header = group.reached.front().header;
    Text code;
    for (const Text& line : std::span(block_).subspan(CodeLine)) {
        code.append(code.empty() ? TextView() : constants::LineBreak).append(line);
    }
    // Most templates give every procedure the same code.
    if (!checked_ || checked_->code != code) {
        checked_ = {code, ObjectionToCode(code, wanted_.label)};
    }
    if (const auto& objection = checked_->objection) {
        return Skip{SkipReason::BreaksProcedure, header,
                    "of the template as it would be inserted here, " + *objection};
    }
    return std::nullopt;
}

std::optional<Skip> HandlerWriter::CheckLabels(const EditTarget& target, const ProcedureText& text,
                                               const Part& part,
                                               const std::optional<HandlerBlock>& block) const {
    const auto body = text.body(part).first(block ? block->begin : text.body(part).size());
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
    return CheckJumps(target, text, part, block);
}

// A jump to a label that nothing has is a fault in the code already, but the handler's label would hide it.
// "On Error GoTo" with that label only waits for the handler.
std::optional<Skip> HandlerWriter::CheckJumps(const EditTarget& target, const ProcedureText& text,
                                              const Part& part,
                                              const std::optional<HandlerBlock>& block) const {
    const auto body = text.body(part);
    const std::size_t kept = block ? block->begin : body.size();
    const auto above =
        text.lines(part).first(static_cast<std::size_t>(part.body.begin - part.lines.begin) + kept);
    if (!MayJumpIntoBlock(above, block_)) {
        return std::nullopt;
    }
    std::vector<Text> lines(above.begin(), above.end());
    for (RedirectedLine& line : RedirectLines(above, wanted_.label, constants::NoErrorHandler)) {
        lines[line.index] = std::move(line.text);
    }
    lines.insert(lines.end(), block_.begin(), block_.end());
    const auto jump = FindJumpIntoBlock(lines, above.size(), lines.size(), body.subspan(kept));
    if (!jump) {
        return std::nullopt;
    }
    const Line line = part.lines.begin + static_cast<std::int32_t>(jump->line);
    return Skip{SkipReason::JumpTarget, line,
                target.Place(line) + " jumps to " + Printable(jump->target) +
                    ", which is nowhere now; it would jump into the handler"};
}

std::optional<Skip> HandlerWriter::Write(const EditTarget& target, const ProcedureGroup& group,
                                         const ProcedureText& text, const Blocks& blocks,
                                         const std::vector<bool>& isLed, ComponentReport& report) {
    workspace::Module& module = target.module;
    Work work{target, text, blocks, isLed, report, module.CountOfLines()};
    std::vector<Remark> remarks = Remarks(work);
    const std::size_t procedures = module.CountOfProcedures();
    for (const Part& part : text.parts()) {
        work.closings.push_back(module.OriginOf(part.body.end));
    }
    target.lintara.ErrorHandlerInserter(target.project.name(), target.component.name, group.name,
                                        wanted_.label, wanted_.code);
    ProcedureGroup now = group;
    if (!IsAsForeseen(work, now, procedures)) {
        Withdraw(work, group);
        return Skip{SkipReason::BreaksProcedure, text.parts().front().lines.begin,
                    "with the handler in it, it would end somewhere else"};
    }
    std::ranges::move(remarks, std::back_inserter(report.remarks));
    Refresh(now, module);
    Settle(work, now);
    return std::nullopt;
}

std::vector<Remark> HandlerWriter::Remarks(const Work& work) const {
    std::vector<Remark> remarks;
    for (std::size_t i = 0; i < work.blocks.size(); ++i) {
        const Part& part = work.text.parts()[i];
        if (work.blocks[i]) {
            continue;
        }
        if (const auto other = FindOtherTarget(work.text.body(part), wanted_.label)) {
            const Line line = At(part, *other);
            remarks.push_back({"other-handler", work.target.Input(line),
                               work.target.Place(line) +
                                   " leads errors to another handler; from there on the "
                                   "inserted one is not reached"});
        }
    }
    return remarks;
}

// How many lines stand in front of those that the body had: 1 when the statement that leads to the label was
// inserted.
std::int32_t HandlerWriter::FirstLines(const Part& part, const workspace::ProcedureInfo& now) const {
    const std::int32_t added = now.body().count() - part.body.count();
    return added == static_cast<std::int32_t>(block_.size()) ? 0 : 1;
}

bool HandlerWriter::IsAsForeseen(const Work& work, const ProcedureGroup& group,
                                 std::size_t proceduresBefore) {
    const workspace::Module& module = work.target.module;
    if (module.CountOfProcedures() != proceduresBefore) {
        return false;
    }
    ProcedureGroup now = group;
    Refresh(now, module);
    for (std::size_t i = 0; i < work.blocks.size(); ++i) {
        const Part& part = work.text.parts()[i];
        const workspace::ProcedureInfo& procedure = now.reached[i];
        std::int32_t added = 0;
        if (!work.blocks[i]) {
            added = static_cast<std::int32_t>(block_.size()) + FirstLines(part, procedure);
        }
        if (!procedure.closed || procedure.body().count() != part.body.count() + added) {
            return false;
        }
    }
    after_.Read(module, now);
    return !CheckRanges(work.target, now, after_);
}

// Puts right what the library's search for texts did to the lines that were there.
void HandlerWriter::Settle(const Work& work, const ProcedureGroup& group) const {
    workspace::Module& module = work.target.module;
    ProcedureGroup now = group;
    for (std::size_t i = 0; i < work.blocks.size(); ++i) {
        if (work.blocks[i]) {
            continue;
        }
        const Line begin = now.reached[i].bodyBegin;
        const std::int32_t first = FirstLines(work.text.parts()[i], now.reached[i]);
        for (const RedirectedLine& redirected :
             RedirectLines(work.text.body(work.text.parts()[i]), constants::NoErrorHandler, wanted_.label)) {
            Restore(module, begin + first + static_cast<std::int32_t>(redirected.index), redirected.text);
        }
        RemarkLongLines(work, now.reached[i]);
        if (first == 1 && work.isLed[i]) {
            Attempt(module.DeleteLines(begin, 1));
            Refresh(now, module);
        }
    }
}

void HandlerWriter::RemarkLongLines(const Work& work, const workspace::ProcedureInfo& procedure) const {
    const EditTarget& target = work.target;
    Text line;
    const Line block = procedure.closing - static_cast<std::int32_t>(block_.size());
    for (Line at = block; at < procedure.closing; ++at) {
        target.module.ReadLine(at, line);
        if (line.size() > workspace::longestLine) {
            work.report.remarks.push_back(
                {"line-too-long", target.Input(at),
                 "line " + std::to_string(at - block - static_cast<std::int32_t>(CodeLine) + 1) +
                     " of the template, inserted above " + target.Place(at) + ", has " +
                     std::to_string(line.size()) + " characters; the IDE accepts " +
                     std::to_string(workspace::longestLine)});
        }
    }
}

// What was inserted goes: all lines of the parts that were not there before.
void HandlerWriter::Withdraw(const Work& work, const ProcedureGroup& group) {
    workspace::Module& module = work.target.module;
    std::vector<std::pair<Line, Line>> parts;  // where each begins, and its closing line in the input
    for (std::size_t i = 0; i < work.text.parts().size(); ++i) {
        parts.emplace_back(work.text.parts()[i].lines.begin, work.closings[i]);
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
    if (module.CountOfLines() != work.linesBefore) {
        throw Refusal(std::string(KindWord(group)) + " " + Printable(group.name) + " in " +
                      Printable(work.target.component.name) +
                      ": its error handler did not go where it belongs; leave it out with --exclude");
    }
    work.text.PutBackAll(module);
}

}  // namespace lintara::cli
