#include "transform/text_selection.h"

#include "base/checked.h"
#include "base/constants.h"
#include "base/result.h"
#include "base/statement.h"
#include "base/strings.h"
#include "transform/line_breaks.h"

namespace lintara::transform {
namespace {

// a + b - c, in this order.
Result<std::int32_t> SumLess(std::int32_t a, std::int32_t b, std::int32_t c) {
    return Then(CheckedAdd(a, b), [c](std::int32_t sum) { return CheckedSubtract(sum, c); });
}

// The line in front of `column`, `text`, and the rest of the line.
Result<Text> Spliced(TextView line, TextView text, std::int32_t column) {
    const auto front =
        Then(CheckedSubtract(column, 1), [&](std::int32_t length) { return Left(line, length); });
    const auto rest = Then(CheckedSubtract(Len(line), column), [&](std::int32_t length) {
        return Then(CheckedAdd(length, 1), [&](std::int32_t kept) { return Right(line, kept); });
    });
    if (!front || !rest) {
        return Failure(ErrorNumber::InvalidArgument, "the column is outside the line");
    }
    return Text(*front).append(text).append(*rest);
}

}  // namespace

Text GetTextSelection(Text& lines, std::int32_t startLine, std::int32_t endLine, std::int32_t startColumn,
                      std::int32_t endColumn) {
    if (endLine != startLine && endColumn == 1) {
        lines += constants::LineBreak;
    }
    const std::int32_t lastBreak = LineBreaksIn(lines).last;
    const std::int32_t lastLine = lastBreak == 0 ? 0 : lastBreak + 1;  // its offset in `lines`
    std::int32_t length = 0;
    Assign(length, SumLess(lastLine, endColumn, startColumn));
    TextView selected;
    Assign(selected, Mid(lines, startColumn, length));
    return Text(selected);
}

Text InsertTextInLine(TextView line, TextView text, std::int32_t column) {
    Text result;
    Assign(result, Spliced(line, text, column));
    return result;
}

void TranslateCarret(std::int32_t& line, std::int32_t& column, TextView text) {
    const LineBreaks breaks = LineBreaksIn(text);
    if (breaks.count == 0) {
        Assign(column, CheckedAdd(column, Len(text)));
    } else {
        column = Len(text) - breaks.last;
    }
    Assign(line, CheckedAdd(line, breaks.count));
}

}  // namespace lintara::transform
