#include "cli/edits/number_insertion.h"

#include "base/statement.h"
#include "cli/edits/refusal.h"
#include "cli/guards/existing_numbers.h"
#include "cli/guards/jump_targets.h"
#include "cli/guards/range_guard.h"
#include "cli/guards/unnumberable_lines.h"
#include "cli/output/terminal_text.h"
#include "transform/line_numbers.h"
#include "transform/line_text.h"
#include "workspace/component_file.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <iterator>

namespace lintara::cli {
namespace {

constexpr TextView NumberColumn = u"       ";
static_assert(NumberColumn.size() == transform::NumberColumnWidth);

constexpr std::int64_t LargestNumber = 99999;

bool IsEmpty(const ProcedureText::Part& part) {
    return part.body.count() == 0;
}

bool HasLongHeader(const ProcedureText::Part& part) {
    return part.body.begin - part.lines.begin > 1;
}

// Whether removal would take something off a line that insertion left as it was.
bool WouldLose(TextView line) {
    return line.starts_with(NumberColumn) && line.find_first_not_of(u' ') != TextView::npos;
}

}  // namespace

NumberInsertion::NumberInsertion(const NumberOptions& numbers) : numbers_(numbers) {
    if (numbers_.numbering == Numbering::Module) {
        numbers_.step = 1;
    }
}

std::expected<bool, Skip> NumberInsertion::Apply(const EditTarget& target, const ProcedureGroup& group,
                                                 ComponentReport& report) {
    text_.Read(target.module, group);
    if (std::ranges::all_of(text_.parts(), IsEmpty)) {
        return false;
    }
    if (auto skip = CheckRanges(target, group, text_)) {
        return std::unexpected(*std::move(skip));
    }
    if (const auto line = numbers_.renumber ? std::nullopt : FirstNumber()) {
        if (IsNumberedAlready(target, group)) {
            return false;
        }
        return std::unexpected(
            Skip{SkipReason::AlreadyNumbered, *line,
                 target.Place(*line) + " has a number; --renumber replaces the numbers by new ones"});
    }
    if (auto skip = Number(target, group)) {
        return std::unexpected(*std::move(skip));
    }
    std::ranges::move(remarks_, std::back_inserter(report.remarks));
    bool numbered = false;
    for (const Part& part : text_.parts()) {
        if (Settle(target, part)) {
            numbered = true;
            RequireFiveDigits(target, group, part);
            RemarkLimit(target, group, part, report);
            RemarkLongLines(target, part, report);
        }
    }
    return removedFirst_ ? before_.Differs(target.module) : numbered;
}

bool NumberInsertion::ApplyExactly(const EditTarget& target, const ProcedureGroup& group) {
    text_.Read(target.module, RangesToVisit(target.RangesOf(group)));
    const Text& project = target.project.name();
    const Text& component = target.component.name;
    if (numbers_.renumber) {
        target.lintara.LineNumbersRemover(project, component, group.name);
    }
    base_ = BaseOf(target, group);
    target.lintara.LineNumbersInserter(project, component, group.name, base_, numbers_.step);
    return text_.Differs(target.module);
}

bool NumberInsertion::HasWork(const workspace::Module& module,
                              const workspace::ProcedureInfo& procedure) const {
    Text line;
    for (Line at = procedure.body().begin; at < procedure.body().end; ++at) {
        module.ReadLine(at, line);
        if (line.find_first_not_of(u' ') != Text::npos) {
            return true;
        }
    }
    return false;
}

std::optional<Skip> NumberInsertion::Number(const EditTarget& target, const ProcedureGroup& group) {
    if (auto skip = ClearTheWay(target, group)) {
        return skip;
    }
    base_ = BaseOf(target, group);
    target.lintara.LineNumbersInserter(target.project.name(), target.component.name, group.name, base_,
                                       numbers_.step);
    for (const Part& part : text_.parts()) {
        BlankNumbers(target, part);
    }
    auto skip = CheckResult(target, group);
    if (skip) {
        Undo(target);
    }
    return skip;
}

std::optional<Line> NumberInsertion::FirstNumber() const {
    for (const Part& part : text_.parts()) {
        if (const auto found = FindNumericLabel(text_.body(part))) {
            return part.body.begin + static_cast<std::int32_t>(*found);
        }
    }
    return std::nullopt;
}

// Numbers the group anew, compares, and takes that back.
bool NumberInsertion::IsNumberedAlready(const EditTarget& target, const ProcedureGroup& group) {
    if (Number(target, group)) {
        return false;
    }
    text_.Read(target.module, group);
    bool same = true;
    for (std::size_t i = 0; i < text_.parts().size(); ++i) {
        same = same && NumbersAtStartOf(before_.body(before_.parts()[i])) ==
                           NumbersAtStartOf(text_.body(text_.parts()[i]));
    }
    before_.PutBackAll(target.module);
    return same;
}

std::optional<Skip> NumberInsertion::ClearTheWay(const EditTarget& target, const ProcedureGroup& group) {
    removedFirst_ = false;
    remarks_.clear();
    if (FirstNumber()) {
        if (auto skip = RemoveFirst(target, group)) {
            return skip;
        }
    }
    auto skip = CheckForeignNumbers(target);
    if (!skip) {
        skip = CheckContinuations(target);
    }
    if (skip) {
        Undo(target);
    }
    return skip;
}

std::optional<Skip> NumberInsertion::RemoveFirst(const EditTarget& target, const ProcedureGroup& group) {
    std::swap(text_, before_);
    const auto removed = removal_.RemoveFrom(target, group, before_, remarks_);
    if (!removed) {
        return removed.error();
    }
    removedFirst_ = true;
    text_.Read(target.module, group);
    if (const auto line = FirstNumber()) {
        Undo(target);
        return Skip{SkipReason::AlreadyNumbered, *line,
                    target.Place(*line) + " has a number that cannot be removed"};
    }
    return std::nullopt;
}

std::optional<Skip> NumberInsertion::CheckForeignNumbers(const EditTarget& target) const {
    for (const Part& part : text_.parts()) {
        if (const auto found = FindForeignNumber(text_.body(part))) {
            const Line line = part.body.begin + static_cast<std::int32_t>(*found);
            return Skip{SkipReason::ForeignNumbers, line,
                        target.Place(line) + " has a number that another tool wrote; remove it there first"};
        }
    }
    return std::nullopt;
}

// An underscore at the start of a line continues nothing; behind a number it would. And a closing statement
// that begins above the closing line would not close any more with a number in front of it.
std::optional<Skip> NumberInsertion::CheckContinuations(const EditTarget& target) const {
    for (const Part& part : text_.parts()) {
        const auto body = text_.body(part);
        if (const auto found = std::ranges::find(body, u"_"); found != body.end()) {
            const Line line = part.body.begin + static_cast<std::int32_t>(found - body.begin());
            return Skip{SkipReason::RangeMismatch, line,
                        "the underscore of " + target.Place(line) +
                            " continues nothing now, but would behind a number"};
        }
        if (!body.empty() && workspace::Continues(body.back())) {
            const Line line = part.body.end - 1;
            return Skip{SkipReason::RangeMismatch, line,
                        target.Place(line) + " is a part of the statement that closes it"};
        }
    }
    return std::nullopt;
}

void NumberInsertion::BlankNumbers(const EditTarget& target, const Part& part) {
    FindUnnumberableLines(text_.body(part), indexes_);
    for (const std::size_t index : indexes_) {
        const Line line = part.body.begin + static_cast<std::int32_t>(index);
        if (NumberOf(target, line)) {
            Attempt(target.module.RestoreLine(line, Text(NumberColumn) + text_.body(part)[index]));
        }
    }
}

std::optional<Skip> NumberInsertion::CheckResult(const EditTarget& target, const ProcedureGroup& group) {
    for (const Part& part : text_.parts()) {
        if (auto skip = CheckJumps(target, part)) {
            return skip;
        }
        if (auto skip = CheckLimit(target, part)) {
            return skip;
        }
    }
    // The search for the end of one procedure of a property may begin inside the next one, when its header
    // has several lines; what numbering did there could mislead it on removal.
    if (text_.parts().size() > 1 && std::ranges::any_of(text_.parts(), HasLongHeader)) {
        return CheckRanges(target, group);
    }
    return std::nullopt;
}

// A jump to a number that was no line's is a fault in the code already, but a number there would hide it, and
// removal would have to keep the number.
std::optional<Skip> NumberInsertion::CheckJumps(const EditTarget& target, const Part& part) {
    if (IsEmpty(part)) {
        return std::nullopt;
    }
    const std::int64_t highest = base_ + LastOffset(part);
    for (const Jump& jump : FindJumps(text_.lines(part), base_, highest)) {
        const std::int64_t offset = jump.number - base_;
        if (offset % numbers_.step == 0 &&
            NumberOf(target, part.body.begin + static_cast<std::int32_t>(offset / numbers_.step))) {
            const Line line = part.lines.begin + static_cast<std::int32_t>(jump.line);
            return Skip{SkipReason::JumpTarget, line,
                        target.Place(line) + " jumps to " + std::to_string(jump.number) +
                            ", a number that a line would get now"};
        }
    }
    return std::nullopt;
}

// Removal tells from two numbers where numbering stopped. Where only one was written, lines beyond must not
// look like shifted ones.
std::optional<Skip> NumberInsertion::CheckLimit(const EditTarget& target, const Part& part) {
    if (LastOffset(part) < transform::NumberOffsetLimit) {
        return std::nullopt;
    }
    std::optional<Skip> lost;
    int numbers = 0;
    for (Line line = part.body.begin; line < part.body.end && numbers < 2; ++line) {
        const Text& original = text_.body(part)[static_cast<std::size_t>(line - part.body.begin)];
        if (NumberOf(target, line)) {
            ++numbers;
        } else if (!lost && current_ == original && WouldLose(original)) {
            lost = Skip{SkipReason::NumberingLimit, line,
                        NumberingText() + " leaves too few numbers to tell numbered lines from others; " +
                            target.Place(line) + " would not come back on removal"};
        }
    }
    return numbers < 2 ? lost : std::nullopt;
}

// Without a number in it, a body would stay as it is on removal, shifted lines included.
bool NumberInsertion::Settle(const EditTarget& target, const Part& part) {
    for (Line line = part.body.begin; line < part.body.end; ++line) {
        if (NumberOf(target, line)) {
            return true;
        }
    }
    text_.PutBack(target.module, part);
    return false;
}

void NumberInsertion::RequireFiveDigits(const EditTarget& target, const ProcedureGroup& group,
                                        const Part& part) {
    if (base_ + LastOffset(part) <= LargestNumber) {
        return;
    }
    std::optional<std::int64_t> last;
    Line line = part.body.end;
    while (!last && line > part.body.begin) {
        last = NumberOf(target, --line);
    }
    if (last && *last > LargestNumber) {
        throw Refusal(NumberingText() + ": " + target.Place(line) + " of " + std::string(KindWord(group)) +
                      " " + Printable(group.name) + " in " + Printable(target.component.name) +
                      " would get the number " + std::to_string(*last) +
                      "; numbers must have five digits, or they cannot be removed again");
    }
}

void NumberInsertion::RemarkLimit(const EditTarget& target, const ProcedureGroup& group, const Part& part,
                                  ComponentReport& report) const {
    if (LastOffset(part) < transform::NumberOffsetLimit) {
        return;
    }
    const std::int64_t lines = (transform::NumberOffsetLimit - 1) / numbers_.step + 1;
    const Line line = target.Input(part.body.begin + static_cast<std::int32_t>(lines));
    report.remarks.push_back({"numbering-limit", line,
                              "numbers of " + std::string(KindWord(group)) + " " + Printable(group.name) +
                                  " end ahead of line " + std::to_string(line.value()) +
                                  ", where the library stops numbering"});
}

void NumberInsertion::RemarkLongLines(const EditTarget& target, const Part& part, ComponentReport& report) {
    Line line = part.body.begin;
    for (const Text& original : text_.body(part)) {
        const bool fitted = original.size() <= workspace::longestLine;
        if (fitted && original.size() + transform::NumberColumnWidth > workspace::longestLine) {
            target.module.ReadLine(line, current_);
            if (current_.size() > workspace::longestLine) {
                report.remarks.push_back({"line-too-long", target.Input(line),
                                          target.Place(line) + " is longer now than the " +
                                              std::to_string(workspace::longestLine) +
                                              " characters that the IDE accepts; split it"});
            }
        }
        ++line;
    }
}

void NumberInsertion::Undo(const EditTarget& target) {
    text_.PutBackAll(target.module);
    if (removedFirst_) {
        before_.PutBackAll(target.module);
    }
}

std::optional<std::int64_t> NumberInsertion::NumberOf(const EditTarget& target, Line line) {
    target.module.ReadLine(line, current_);
    const transform::LineLabel label = transform::GetLineLabel(current_);
    if (!label.isLabel || !transform::IsNumericLabel(label.label)) {
        return std::nullopt;
    }
    std::int64_t number = 0;
    for (const char16_t c : label.label) {
        number = number * 10 + (c - u'0');
    }
    return number;
}

std::int32_t NumberInsertion::BaseOf(const EditTarget& target, const ProcedureGroup& group) const {
    if (numbers_.numbering == Numbering::Procedure) {
        return numbers_.base;
    }
    return moduleNumberOffset + target.RangesOf(group).Start1.value();
}

std::string NumberInsertion::NumberingText() const {
    if (numbers_.numbering == Numbering::Module) {
        return "--numbering module";
    }
    return "--base " + std::to_string(numbers_.base) + " with --step " + std::to_string(numbers_.step);
}

std::int64_t NumberInsertion::LastOffset(const Part& part) const {
    return std::int64_t{std::max(part.body.count() - 1, 0)} * numbers_.step;
}

}  // namespace lintara::cli
