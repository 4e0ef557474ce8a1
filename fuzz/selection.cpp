// The arithmetic of selection and caret with any texts and numbers: the results are those of plain sums in
// numbers that never overflow, and one that does not fit leaves what it was to become as it was.
#include "assistant/lintara.h"
#include "fuzz/input.h"
#include "fuzz/require.h"

#include <cstdint>
#include <limits>
#include <optional>
#include <string>
#include <vector>

namespace lintara::fuzz {
namespace {

using Number = std::int64_t;

std::int32_t AnyNumber(Input& input) {
    return input.Flag() ? input.Between<std::int32_t>(-2, 40)
                        : input.Between(std::numeric_limits<std::int32_t>::min(),
                                        std::numeric_limits<std::int32_t>::max());
}

bool Fits(Number number) {
    return number >= std::numeric_limits<std::int32_t>::min() &&
           number <= std::numeric_limits<std::int32_t>::max();
}

// The places of the line breaks, from 1.
std::vector<Number> BreaksIn(const Text& text) {
    std::vector<Number> breaks;
    for (std::size_t at = text.find(u"\r\n"); at != Text::npos; at = text.find(u"\r\n", at + 2)) {
        breaks.push_back(static_cast<Number>(at) + 1);
    }
    return breaks;
}

void CheckSelection(Input& input, Lintara& library, const Text& text) {
    const std::int32_t startLine = AnyNumber(input);
    const std::int32_t endLine = AnyNumber(input);
    const std::int32_t startColumn = AnyNumber(input);
    const std::int32_t endColumn = AnyNumber(input);
    Text lines = text;
    const Text selected = library.GetTextSelection(lines, startLine, endLine, startColumn, endColumn);
    const bool endsInBreak = startLine != endLine && endColumn == 1;
    RequireSame(lines, text + (endsInBreak ? u"\r\n" : u""), "a selection up to a line has its line break");
    const auto breaks = BreaksIn(lines);
    const Number end = (breaks.empty() ? 0 : breaks.back() + 1) + endColumn;
    const Number length = end - startColumn;
    Text expected;
    const bool isInside = startColumn >= 1 && startColumn <= static_cast<Number>(lines.size());
    if (Fits(end) && Fits(length) && length > 0 && isInside) {
        expected = lines.substr(static_cast<std::size_t>(startColumn) - 1, static_cast<std::size_t>(length));
    }
    RequireSame(selected, expected, "the selected text is cut out");
}

void CheckInsertion(Input& input, Lintara& library, const Text& line) {
    const Text text = input.ShortText(12);
    const std::int32_t column = AnyNumber(input);
    Text expected;
    if (column >= 1 && column - 1 <= static_cast<Number>(line.size())) {
        expected = Text(line).insert(static_cast<std::size_t>(column) - 1, text);
    }
    RequireSame(library.InsertTextInLine(line, text, column), expected, "a text is put into its column");
}

void CheckCaret(Input& input, Lintara& library, const Text& text) {
    const std::int32_t line = AnyNumber(input);
    const std::int32_t column = AnyNumber(input);
    std::int32_t newLine = line;
    std::int32_t newColumn = column;
    library.TranslateCarret(newLine, newColumn, text);
    const auto breaks = BreaksIn(text);
    const auto size = static_cast<Number>(text.size());
    const Number expectedLine = line + static_cast<Number>(breaks.size());
    const Number expectedColumn = breaks.empty() ? column + size : size - breaks.back();
    Require(newLine == (Fits(expectedLine) ? expectedLine : line), "the caret moves down by the line breaks");
    Require(newColumn == (Fits(expectedColumn) ? expectedColumn : column),
            "the caret stands behind the text");
}

void Check(Input& input) {
    Lintara library;
    const Text text = input.ShortText(80);
    while (!input.empty()) {
        CheckSelection(input, library, text);
        CheckInsertion(input, library, text);
        CheckCaret(input, library, text);
    }
}

}  // namespace
}  // namespace lintara::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    lintara::fuzz::Input input(data, size);
    lintara::fuzz::Check(input);
    return 0;
}
