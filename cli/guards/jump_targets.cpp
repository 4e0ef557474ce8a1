#include "cli/guards/jump_targets.h"

#include "cli/guards/existing_numbers.h"
#include "cli/project/logical_lines.h"
#include "workspace/characters.h"
#include "workspace/syntax.h"

#include <algorithm>

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
    std::size_t i = FiveDigitNumber(line) ? 7 : 0;
    while (i < line.size()) {
        if (!IsAsciiDigit(line[i])) {
            ++i;
            continue;
        }
        const Digits digits = ReadDigits(line, i);
        if (digits.value >= lowest && digits.value <= highest) {
            return true;
        }
        i = digits.end;
    }
    return false;
}

enum class Expects { Nothing, Target, Targets };

// What may follow a word: a number to jump to, or a list of them.
Expects ExpectsAfter(TextView word, TextView previousWord) {
    using workspace::IsWord;
    if (IsWord(word, u"goto") || IsWord(word, u"gosub")) {
        return Expects::Targets;
    }
    if (IsWord(previousWord, u"go") && (IsWord(word, u"to") || IsWord(word, u"sub"))) {
        return Expects::Targets;
    }
    if (IsWord(word, u"then") || IsWord(word, u"else") || IsWord(word, u"resume")) {
        return Expects::Target;
    }
    return Expects::Nothing;
}

// Goes through the code of one logical line, its comment cut off.
class JumpReader {
  public:
    explicit JumpReader(TextView line) : line_(line) {}

    template <class Visit>
    void ForEachTarget(Visit visit) {
        TextView previous;
        while (at_ < line_.size()) {
            const char16_t c = line_[at_];
            if (c == u'"') {
                SkipQuotes();
            } else if (!workspace::IsWordCharacter(c)) {
                ++at_;
                continue;
            } else {
                const TextView word = TakeWord();
                if (!isMember_) {
                    ReadTargets(ExpectsAfter(word, previous), visit);
                }
                previous = word;
            }
        }
    }

  private:
    void SkipQuotes() {
        const std::size_t end = line_.find(u'"', at_ + 1);
        at_ = end == TextView::npos ? line_.size() : end + 1;
    }

    TextView TakeWord() {
        isMember_ = at_ > 0 && (line_[at_ - 1] == u'.' || line_[at_ - 1] == u'!');
        const std::size_t end = workspace::SkipWord(line_, at_);
        const TextView word = line_.substr(at_, end - at_);
        at_ = end;
        return word;
    }

    // Items that are labels, not numbers, are passed over.
    template <class Visit>
    void ReadTargets(Expects expects, Visit visit) {
        while (expects != Expects::Nothing) {
            const std::size_t begin = workspace::SkipBlanks(line_, at_);
            const std::size_t end = workspace::SkipWord(line_, begin);
            const Digits digits = ReadDigits(line_, begin);
            if (digits.end > begin && digits.end == end) {
                visit(digits.value);
                at_ = end;
            }
            const std::size_t comma = workspace::SkipBlanks(line_, end);
            if (expects == Expects::Target || comma == line_.size() || line_[comma] != u',') {
                return;
            }
            at_ = comma + 1;
        }
    }

    TextView line_;
    std::size_t at_ = 0;
    bool isMember_ = false;
};

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
        JumpReader(code).ForEachTarget([&](std::int64_t number) {
            if (number >= lowest && number <= highest) {
                jumps.push_back({logical.first(), number});
            }
        });
    }
    return jumps;
}

}  // namespace lintara::cli
