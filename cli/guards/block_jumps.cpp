#include "cli/guards/block_jumps.h"

#include "cli/guards/jump_reader.h"
#include "cli/project/logical_lines.h"
#include "workspace/characters.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <unordered_set>

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

// Whether the line may jump to one of the targets: it holds the text.
bool MayJump(TextView line, const std::unordered_set<Text>& targets) {
    return std::ranges::any_of(targets, [&](const Text& target) {
        return workspace::FindWithoutCase(line, target) != TextView::npos;
    });
}

}  // namespace

bool MayJumpIntoBlock(std::span<const Text> lines, std::span<const Text> block) {
    const std::unordered_set<Text> inside = TargetsIn(block);
    return std::ranges::any_of(lines, [&](const Text& line) { return MayJump(line, inside); });
}

std::optional<BlockJump> FindJumpIntoBlock(std::span<const Text> lines, std::size_t begin, std::size_t end,
                                           std::span<const Text> others) {
    std::unordered_set<Text> inside = TargetsIn(lines.subspan(begin, end - begin));
    for (const Text& target : TargetsIn(others)) {
        inside.erase(target);
    }
    if (inside.empty()) {
        return std::nullopt;
    }
    LogicalLines logical(lines);
    while (logical.Next()) {
        if ((logical.first() >= begin && logical.first() < end) || !MayJump(logical.text(), inside)) {
            continue;
        }
        const TextView code = logical.text().substr(0, workspace::CommentStart(logical.text()));
        for (const TextView target : JumpTargetsIn(code)) {
            if (inside.contains(Canonical(target))) {
                return BlockJump{logical.first(), Text(target)};
            }
        }
    }
    return std::nullopt;
}

}  // namespace lintara::cli
