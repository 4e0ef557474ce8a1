#include "cli/guards/block_jumps.h"

#include "cli/project/logical_lines.h"
#include "workspace/characters.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <unordered_set>
#include <vector>

namespace lintara::cli {
namespace {

// Labels and numbers in the form in which equal ones are the same.
Text Canonical(TextView target) {
    if (!workspace::IsDigit(target.front())) {
        return workspace::FoldCase(target);
    }
    const std::size_t first = std::min(target.find_first_not_of(u'0'), target.size() - 1);
    return Text(target.substr(first));
}

TextView WordAt(TextView line, std::size_t at) {
    return line.substr(at, workspace::SkipWord(line, at) - at);
}

// The number and the label that the line begins with.
std::unordered_set<Text> TargetsIn(std::span<const Text> lines) {
    std::unordered_set<Text> targets;
    LogicalLines logical(lines);
    while (logical.Next()) {
        const TextView line = logical.text();
        const std::size_t end = workspace::SkipLineNumberAndLabel(line);
        std::size_t at = workspace::SkipBlanks(line);
        while (at < end) {
            if (const TextView word = WordAt(line, at); !word.empty()) {
                targets.insert(Canonical(word));
                at += word.size();
            } else {
                ++at;
            }
        }
        // A number may be all there is on its line.
        if (const TextView word = WordAt(line, at); !word.empty() && workspace::IsDigit(word.front())) {
            targets.insert(Canonical(word));
        }
    }
    return targets;
}

enum class Expects { Nothing, Number, Target, Targets };

Expects ExpectsAfter(TextView word, TextView previousWord) {
    using workspace::IsWord;
    if (IsWord(word, u"goto") || IsWord(word, u"gosub")) {
        return Expects::Targets;
    }
    if (IsWord(previousWord, u"go") && (IsWord(word, u"to") || IsWord(word, u"sub"))) {
        return Expects::Targets;
    }
    if (IsWord(word, u"resume")) {
        return Expects::Target;
    }
    return IsWord(word, u"then") || IsWord(word, u"else") ? Expects::Number : Expects::Nothing;
}

// Goes through the code of one logical line, its comment cut off.
class TargetReader {
  public:
    explicit TargetReader(TextView code) : code_(code) {}

    std::vector<TextView> Read() {
        TextView previous;
        while (at_ < code_.size()) {
            if (code_[at_] == u'"') {
                SkipQuotes();
                continue;
            }
            const TextView word = WordAt(code_, at_);
            if (word.empty()) {
                ++at_;
                continue;
            }
            const bool isMember = at_ > 0 && (code_[at_ - 1] == u'.' || code_[at_ - 1] == u'!');
            at_ += word.size();
            if (!isMember) {
                ReadTargets(ExpectsAfter(word, previous));
            }
            previous = word;
        }
        return std::move(targets_);
    }

  private:
    void SkipQuotes() {
        const std::size_t end = code_.find(u'"', at_ + 1);
        at_ = end == TextView::npos ? code_.size() : end + 1;
    }

    // What follows a statement that takes one target is read again: it may begin the next statement.
    void ReadTargets(Expects expects) {
        while (expects != Expects::Nothing) {
            const std::size_t begin = workspace::SkipBlanks(code_, at_);
            const TextView word = WordAt(code_, begin);
            if (word.empty() || (expects == Expects::Number && !workspace::IsDigit(word.front()))) {
                return;
            }
            targets_.push_back(word);
            if (expects != Expects::Targets) {
                return;
            }
            at_ = begin + word.size();
            const std::size_t comma = workspace::SkipBlanks(code_, at_);
            if (comma == code_.size() || code_[comma] != u',') {
                return;
            }
            at_ = comma + 1;
        }
    }

    TextView code_;
    std::size_t at_ = 0;
    std::vector<TextView> targets_;
};

}  // namespace

std::optional<BlockJump> FindJumpIntoBlock(std::span<const Text> lines, std::size_t begin, std::size_t end) {
    const std::unordered_set<Text> inside = TargetsIn(lines.subspan(begin, end - begin));
    if (inside.empty()) {
        return std::nullopt;
    }
    LogicalLines logical(lines);
    while (logical.Next()) {
        if (logical.first() >= begin && logical.first() < end) {
            continue;
        }
        const TextView code = logical.text().substr(0, workspace::CommentStart(logical.text()));
        for (const TextView target : TargetReader(code).Read()) {
            if (inside.contains(Canonical(target))) {
                return BlockJump{logical.first(), Text(target)};
            }
        }
    }
    return std::nullopt;
}

}  // namespace lintara::cli
