#include "cli/guards/redirected_lines.h"

#include "base/constants.h"
#include "cli/guards/code_text.h"
#include "cli/project/logical_lines.h"
#include "workspace/characters.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <array>

namespace lintara::cli {
namespace {

constexpr TextView Statement = constants::CommittedOnErrorGoTo;

bool HasStatement(const Text& line) {
    return FindText(line, Statement) != TextView::npos;
}

// Calls `visit` with the index, the code's length and the offset of each such statement in code, until it
// returns true.
template <class Visit>
std::optional<std::size_t> FindStatement(std::span<const Text> lines, Visit visit) {
    if (std::ranges::none_of(lines, HasStatement)) {
        return std::nullopt;
    }
    const std::vector<std::size_t> ends = FindCodeEnds(lines);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        for (const std::size_t at : FindInCode(lines[i], ends[i], Statement)) {
            if (visit(TextView(lines[i]), at)) {
                return i;
            }
        }
    }
    return std::nullopt;
}

// The targets of "On Error GoTo" and "On Local Error GoTo" in a logical line's code, whatever blanks stand in
// them.
std::vector<TextView> HandlerTargetsIn(TextView code) {
    std::vector<TextView> targets;
    constexpr std::array<TextView, 3> words{u"on", u"error", u"goto"};
    std::size_t matched = 0;
    bool inQuotes = false;
    for (std::size_t at = 0; at < code.size();) {
        const std::size_t end = workspace::SkipWord(code, at);
        if (end == at) {
            inQuotes ^= code[at] == u'"';
            matched = workspace::IsBlank(code[at]) ? matched : 0;
            ++at;
            continue;
        }
        const TextView word = code.substr(at, end - at);
        at = end;
        if (inQuotes) {
            continue;
        }
        if (matched == words.size()) {
            targets.push_back(word);
            matched = 0;
        } else if (workspace::IsWord(word, words[matched])) {
            ++matched;
        } else if (matched != 1 || !workspace::IsWord(word, u"local")) {
            matched = workspace::IsWord(word, words[0]) ? 1 : 0;
        }
    }
    return targets;
}

Text Redirected(TextView line, std::size_t codeEnd, TextView sought, TextView replacement) {
    Text result;
    std::size_t copied = 0;
    for (const std::size_t at : FindInCode(line, codeEnd, sought)) {
        result.append(line.substr(copied, at - copied)).append(replacement);
        copied = at + sought.size();
    }
    return result.append(line.substr(copied));
}

}  // namespace

std::vector<RedirectedLine> RedirectLines(std::span<const Text> lines, TextView from, TextView to) {
    std::vector<RedirectedLine> redirected;
    if (std::ranges::none_of(lines, HasStatement)) {
        return redirected;
    }
    const Text sought = Text(Statement).append(from);
    const Text replacement = Text(Statement).append(to);
    const std::vector<std::size_t> ends = FindCodeEnds(lines);
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (FindText(lines[i], sought) != TextView::npos) {
            redirected.push_back({i, Redirected(lines[i], ends[i], sought, replacement)});
        }
    }
    return redirected;
}

std::optional<std::size_t> FindLongerTarget(std::span<const Text> lines, TextView target) {
    return FindStatement(lines, [&](TextView line, std::size_t at) {
        const TextView behind = line.substr(at + Statement.size());
        return behind.size() > target.size() &&
               workspace::SameName(behind.substr(0, target.size()), target) &&
               workspace::IsWordCharacter(behind[target.size()]);
    });
}

std::optional<std::size_t> FindOtherTarget(std::span<const Text> lines, TextView label) {
    LogicalLines logical(lines);
    while (logical.Next()) {
        const TextView line = logical.text();
        if (FindText(line, u"error") == TextView::npos) {
            continue;
        }
        const TextView code = line.substr(0, workspace::CommentStart(line));
        for (const TextView target : HandlerTargetsIn(code)) {
            if (target != constants::NoErrorHandler && !workspace::SameName(target, label)) {
                return logical.first();
            }
        }
    }
    return std::nullopt;
}

}  // namespace lintara::cli
