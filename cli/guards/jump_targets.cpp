#include "cli/guards/jump_targets.h"

#include "base/text_scan.h"
#include "cli/guards/existing_numbers.h"
#include "cli/guards/jump_reader.h"
#include "cli/project/logical_lines.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <optional>

namespace lintara::cli {
namespace {

constexpr std::int64_t TooLarge = 10'000'000'000;

bool IsAsciiDigit(char16_t c) {
    return c >= u'0' && c <= u'9';
}

struct Digits {
    std::int64_t value = 0;  // TooLarge for a larger one
    std::size_t end = 0;     // where they began when there are none
};

Digits ReadDigits(TextView line, std::size_t from) {
    Digits digits{0, from};
    while (digits.end < line.size() && IsAsciiDigit(line[digits.end])) {
        digits.value = std::min(TooLarge, digits.value * 10 + (line[digits.end] - u'0'));
        ++digits.end;
    }
    return digits;
}

// Whether some number of the line, its own excepted, lies within the bounds. It says no for nearly every line
// of a real project, at the price of one look at each character.
bool MayJump(TextView line, std::int64_t lowest, std::int64_t highest) {
    std::size_t at = FindDigit(line, FiveDigitNumber(line) ? 7 : 0);
    while (at != TextView::npos) {
        const Digits digits = ReadDigits(line, at);
        if (digits.value >= lowest && digits.value <= highest) {
            return true;
        }
        at = FindDigit(line, digits.end);
    }
    return false;
}

// The number that a word is; none for any other word.
std::optional<std::int64_t> NumberIn(TextView word) {
    const Digits digits = ReadDigits(word, 0);
    return digits.end > 0 && digits.end == word.size() ? std::optional(digits.value) : std::nullopt;
}

}  // namespace

std::vector<Jump> FindJumps(std::span<const Text> lines, std::int64_t lowest, std::int64_t highest) {
    std::vector<Jump> jumps;
    if (std::ranges::none_of(lines, [&](const Text& line) { return MayJump(line, lowest, highest); })) {
        return jumps;
    }
    LogicalLines logical(lines);
    while (logical.Next()) {
        if (!MayJump(logical.text(), lowest, highest)) {
            continue;
        }
        const TextView code = logical.text().substr(0, workspace::CommentStart(logical.text()));
        for (const TextView target : JumpTargetsIn(code)) {
            const auto number = NumberIn(target);
            if (number && *number >= lowest && *number <= highest) {
                jumps.push_back({logical.first(), *number});
            }
        }
    }
    return jumps;
}

}  // namespace lintara::cli
