#include "cli/guards/redirected_lines.h"

#include "base/constants.h"
#include "cli/guards/code_text.h"
#include "workspace/characters.h"
#include "workspace/syntax.h"

#include <algorithm>

namespace lintara::cli {
namespace {

constexpr TextView Statement = constants::CommittedOnErrorGoTo;

bool HasStatement(const Text& line) {
    return FindText(line, Statement) != TextView::npos;
}

TextView WordBehind(TextView line, std::size_t at) {
    const std::size_t begin = workspace::SkipBlanks(line, at + Statement.size());
    return line.substr(begin, workspace::SkipWord(line, begin) - begin);
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
        for (std::size_t at = FindInCode(lines[i], ends[i], Statement); at != TextView::npos;
             at = FindInCode(lines[i], ends[i], Statement, at + Statement.size())) {
            if (visit(TextView(lines[i]), at)) {
                return i;
            }
        }
    }
    return std::nullopt;
}

Text Redirected(TextView line, std::size_t codeEnd, TextView sought, TextView replacement) {
    Text result;
    std::size_t copied = 0;
    for (std::size_t at = FindInCode(line, codeEnd, sought); at != TextView::npos;
         at = FindInCode(line, codeEnd, sought, copied)) {
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
    return FindStatement(lines, [&](TextView line, std::size_t at) {
        const TextView word = WordBehind(line, at);
        return !word.empty() && word != constants::NoErrorHandler && !workspace::SameName(word, label);
    });
}

}  // namespace lintara::cli
