#include "transform/line_numbers.h"

#include "base/checked.h"
#include "base/runtime.h"
#include "base/statement.h"
#include "transform/line_text.h"
#include "transform/procedure_ranges.h"
#include "transform/walks.h"

namespace lintara::transform {
namespace {

using hostmodel::CodeModule;

constexpr TextView Separator = u": ";

// What stands in the number column of a line that may not carry a number.
constexpr TextView NumberColumn = u"       ";
static_assert(NumberColumn.size() == NumberColumnWidth);

// What the lines read so far say about the next one.
struct Walk {
    bool continued = false;    // the previous line that was not blank ended in "_"
    bool afterSelect = false;  // the previous statement was a "Select Case " line

    // A statement split over several lines is judged by its first one.
    void Pass(TextView text) {
        if (!continued) {
            afterSelect = LTrim(text).starts_with(u"Select Case ");
        }
        continued = text.ends_with(u'_');
    }
};

// The counter's last value, (end - start - 1) * step. When it cannot be computed the counted loop runs once,
// as the language's does: with the counter's first value, 0.
std::int32_t LastOffset(Line start, Line end, std::int32_t step) {
    const auto count = CheckedSubtract(end.value(), start.value());
    const auto lines = Then(count, [](std::int32_t value) { return CheckedSubtract(value, 1); });
    std::int32_t last = 0;
    Assign(last, Then(lines, [step](std::int32_t value) { return CheckedMultiply(value, step); }));
    return last;
}

// Puts into `numbered` what `text` becomes at `offset` from the base. False when it stays as it is.
bool NumberLine(Text& numbered, TextView text, const Walk& walk, std::int32_t base, std::int32_t offset) {
    numbered.clear();
    if (walk.continued || walk.afterSelect) {
        numbered.append(NumberColumn).append(text);
        return true;
    }
    if (GetLineLabel(text).isLabel) {
        return false;
    }
    const Result<std::int32_t> number = CheckedAdd(base, offset);
    if (!number) {
        return false;
    }
    AppendDecimal(numbered, *number);
    numbered.append(Separator).append(text);
    return true;
}

// What `text` becomes without its number or the width that it was shifted by; as it is when there is nothing
// to take off. `buffer` holds the new line where it is no part of the old one.
TextView UnnumberedLine(TextView text, Text& buffer) {
    const LineLabel label = GetLineLabel(text);
    if (!label.isLabel) {
        return text.starts_with(NumberColumn) ? text.substr(NumberColumnWidth) : text;
    }
    if (IsNumericLabel(label.label)) {
        return Len(text) >= NumberColumnWidth ? text.substr(NumberColumnWidth) : text;
    }
    const TextView upToColon = text.substr(0, label.label.size() + 1);
    const TextView rest = text.substr(upToColon.size());
    if (!rest.starts_with(NumberColumn)) {
        return text;
    }
    buffer.assign(upToColon).append(rest.substr(NumberColumnWidth));
    return buffer;
}

bool HasNumber(CodeModule& codeModule, Line start, Line end) {
    for (Line line = start; line < end; ++line) {
        const Result<Text> text = codeModule.Lines(line, 1);
        if (text && IsNumericLabel(GetLineLabel(*text).label)) {
            return true;
        }
    }
    return false;
}

// Calls `treat` with the code module and each range of the procedure, if it is found.
template <class Treat>
void ForEachRange(hostmodel::Globals& globals, TextView projectName, TextView componentName,
                  TextView procedureName, Treat treat) {
    const ProcedureRanges ranges = GetProcedureRanges(globals, projectName, componentName, procedureName);
    const Result<CodeModulePtr> reached = CodeModuleByNames(globals, projectName, componentName);
    if (!reached || !ranges.Found) {
        return;
    }
    constexpr Line None{0};
    treat(**reached, ranges.Start1, ranges.End1);
    if (ranges.Start2 > None) {
        treat(**reached, ranges.Start2, ranges.End2);
    }
    if (ranges.Start3 > None) {
        treat(**reached, ranges.Start3, ranges.End3);
    }
}

}  // namespace

void LineNumbersInserter(hostmodel::Globals& globals, TextView projectName, TextView componentName,
                         TextView procedureName, std::int32_t base, std::int32_t step) {
    ForEachRange(globals, projectName, componentName, procedureName,
                 [base, step](CodeModule& codeModule, Line start, Line end) {
                     InsertLineNumbersInRange(codeModule, start, end, base, step);
                 });
}

void LineNumbersRemover(hostmodel::Globals& globals, TextView projectName, TextView componentName,
                        TextView procedureName) {
    ForEachRange(globals, projectName, componentName, procedureName, RemoveLineNumbersInRange);
}

void InsertLineNumbersInRange(CodeModule& codeModule, Line start, Line end, std::int32_t base,
                              std::int32_t step) {
    if (step == 0) {
        return;
    }
    const std::int32_t last = LastOffset(start, end, step);
    const auto isPast = [=](std::int32_t offset) { return step > 0 ? offset > last : offset < last; };
    Walk walk;
    Text numbered;
    Line line = start;
    Result<std::int32_t> offset = 0;
    for (; offset && !isPast(*offset); offset = CheckedAdd(*offset, step), ++line) {
        const Result<Text> text = codeModule.Lines(line, 1);
        if (!text || LTrim(*text).empty()) {
            continue;
        }
        if (*offset >= NumberOffsetLimit) {
            break;
        }
        if (NumberLine(numbered, *text, walk, base, *offset)) {
            Attempt(codeModule.ReplaceLine(line, numbered));
        }
        walk.Pass(*text);
    }
}

void RemoveLineNumbersInRange(CodeModule& codeModule, Line start, Line end) {
    if (!HasNumber(codeModule, start, end)) {
        return;
    }
    Text buffer;
    for (Line line = start; line < end; ++line) {
        const Result<Text> text = codeModule.Lines(line, 1);
        if (!text) {
            continue;
        }
        const TextView unnumbered = UnnumberedLine(*text, buffer);
        if (unnumbered.size() != text->size()) {
            Attempt(codeModule.ReplaceLine(line, unnumbered));
        }
    }
}

}  // namespace lintara::transform
