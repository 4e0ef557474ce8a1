#include "cli/guards/code_text.h"

#include "cli/project/logical_lines.h"
#include "workspace/characters.h"
#include "workspace/syntax.h"

#include <algorithm>

namespace lintara::cli {
namespace {

bool StandsAt(TextView line, std::size_t at, TextView sought) {
    return at + sought.size() <= line.size() &&
           std::ranges::equal(line.substr(at, sought.size()), sought, {}, workspace::Fold, workspace::Fold);
}

}  // namespace

std::size_t FindText(TextView line, TextView sought, std::size_t from) {
    return workspace::FindWithoutCase(line, sought, from);
}

std::vector<std::size_t> FindCodeEnds(std::span<const Text> lines) {
    std::vector<std::size_t> ends;
    ends.reserve(lines.size());
    LogicalLines logical(lines);
    while (logical.Next()) {
        std::size_t code = workspace::CommentStart(logical.text());
        for (std::size_t i = logical.first(); i < logical.end(); ++i) {
            // The underscore that continues a line is no part of the logical line.
            const std::size_t length = lines[i].size() - (i + 1 < logical.end() ? 1 : 0);
            ends.push_back(std::min(code, length));
            code -= ends.back();
        }
    }
    return ends;
}

std::vector<std::size_t> FindInCode(TextView line, std::size_t codeEnd, TextView sought) {
    std::vector<std::size_t> places;
    if (FindText(line, sought) == TextView::npos) {
        return places;
    }
    bool inQuotes = false;
    for (std::size_t at = 0; at + sought.size() <= codeEnd;) {
        if (!inQuotes && StandsAt(line, at, sought)) {
            places.push_back(at);
            at += sought.size();
            continue;
        }
        inQuotes ^= line[at] == u'"';
        ++at;
    }
    return places;
}

bool IsSameCode(TextView a, TextView b) {
    if (a.size() != b.size()) {
        return false;
    }
    const std::size_t codeEnd = workspace::CommentStart(a);
    bool inQuotes = false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        const bool exact = inQuotes || i >= codeEnd;
        if (exact ? a[i] != b[i] : workspace::Fold(a[i]) != workspace::Fold(b[i])) {
            return false;
        }
        inQuotes ^= i < codeEnd && a[i] == u'"';
    }
    return true;
}

}  // namespace lintara::cli
