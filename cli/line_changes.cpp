#include "cli/line_changes.h"

#include "workspace/raw_line.h"

#include <algorithm>

namespace lintara::cli {
namespace {

std::vector<LineChange> CompareInStep(const FileLines& before, const FileLines& after) {
    std::vector<LineChange> changes;
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (before[i] == after[i]) {
            continue;
        }
        if (!changes.empty() && changes.back().beforeEnd == i) {
            ++changes.back().beforeEnd;
            ++changes.back().afterEnd;
        } else {
            changes.push_back({i, i + 1, i, i + 1});
        }
    }
    return changes;
}

}  // namespace

FileLines SplitFile(std::string_view bytes, const workspace::Encoding& encoding) {
    constexpr std::size_t usualLineLength = 32;
    FileLines lines;
    lines.reserve(bytes.size() / usualLineLength + 1);
    for (std::size_t at = 0; at < bytes.size();) {
        const workspace::RawLine line = workspace::NextRawLine(bytes, at, encoding);
        lines.push_back(bytes.substr(line.begin, line.next - line.begin));
        at = line.next;
    }
    return lines;
}

std::vector<LineChange> CompareLines(const FileLines& before, const FileLines& after) {
    if (before.size() == after.size()) {
        return CompareInStep(before, after);
    }
    const std::size_t shorter = std::min(before.size(), after.size());
    std::size_t head = 0;
    while (head < shorter && before[head] == after[head]) {
        ++head;
    }
    std::size_t tail = 0;
    while (tail < shorter - head && before[before.size() - tail - 1] == after[after.size() - tail - 1]) {
        ++tail;
    }
    return {{head, before.size() - tail, head, after.size() - tail}};
}

std::size_t CountChangedLines(const std::vector<LineChange>& changes) {
    std::size_t count = 0;
    for (const LineChange& change : changes) {
        count += std::max(change.beforeEnd - change.beforeBegin, change.afterEnd - change.afterBegin);
    }
    return count;
}

}  // namespace lintara::cli
