#include "cli/guards/existing_numbers.h"

#include "cli/numbers/placed_numbers.h"
#include "cli/project/logical_lines.h"
#include "transform/line_text.h"
#include "workspace/characters.h"
#include "workspace/syntax.h"

namespace lintara::cli {
namespace {

constexpr std::size_t Digits = 5;

bool IsAsciiDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

bool HasNumericLabel(TextView line) {
    const transform::LineLabel label = transform::GetLineLabel(line);
    return label.isLabel && transform::IsNumericLabel(label.label);
}

// Whether a logical line begins with digits and what may follow a line number.
bool BeginsWithNumber(TextView line) {
    const std::size_t begin = workspace::SkipBlanks(line);
    std::size_t end = begin;
    while (end < line.size() && workspace::IsDigit(line[end])) {
        ++end;
    }
    return end > begin && (end == line.size() || workspace::IsBlank(line[end]) || line[end] == u':');
}

}  // namespace

std::optional<std::size_t> FindNumericLabel(std::span<const Text> lines) {
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (HasNumericLabel(lines[i])) {
            return i;
        }
    }
    return std::nullopt;
}

std::optional<std::size_t> FindForeignNumber(std::span<const Text> lines) {
    bool continued = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!continued && BeginsWithNumber(lines[i])) {
            return i;
        }
        continued = workspace::Continues(lines[i]);
    }
    return std::nullopt;
}

std::vector<std::optional<std::int64_t>> NumbersAtStartOf(std::span<const Text> lines) {
    std::vector<std::optional<std::int64_t>> numbers;
    numbers.reserve(lines.size());
    bool continued = false;
    for (const Text& line : lines) {
        numbers.push_back(continued ? std::nullopt : NumberAtStart(line));
        continued = workspace::Continues(line);
    }
    return numbers;
}

std::optional<std::int32_t> FiveDigitNumber(TextView line) {
    if (line.size() < Digits + 2 || line[Digits] != u':' || line[Digits + 1] != u' ') {
        return std::nullopt;
    }
    std::int32_t number = 0;
    for (const char16_t c : line.substr(0, Digits)) {
        if (!IsAsciiDigit(c)) {
            return std::nullopt;
        }
        number = number * 10 + (c - u'0');
    }
    return number;
}

void FindNumberedLines(std::span<const Text> lines, std::vector<NumberedLine>& numbered) {
    bool continued = false;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (!continued) {
            if (const auto number = FiveDigitNumber(lines[i])) {
                numbered.push_back({i, *number});
            } else if (HasNumericLabel(lines[i])) {
                numbered.push_back({i, -1});
            }
        }
        continued = workspace::Continues(lines[i]);
    }
}

}  // namespace lintara::cli
