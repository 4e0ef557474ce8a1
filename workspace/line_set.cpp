#include "workspace/line_set.h"

#include <algorithm>

namespace lintara::workspace {

std::optional<Line> LineSet::NextFrom(Line line) const {
    const auto next = std::ranges::lower_bound(above_, line);
    if (next != above_.end()) {
        return *next;
    }
    const auto beyond = std::ranges::upper_bound(behind_, lineCount_ - line.value());
    return beyond == behind_.begin() ? std::nullopt : std::optional(LineAt(*(beyond - 1)));
}

void LineSet::Insert(Line line) {
    DivideAt(line);
    if (!BeginsBehind(line)) {
        behind_.push_back(lineCount_ - line.value());
    }
}

void LineSet::Erase(Line line) {
    DivideAt(line);
    if (BeginsBehind(line)) {
        behind_.pop_back();
    }
}

void LineSet::LinesMoved(Line line, std::int32_t removed, std::int32_t added) {
    DivideAt(line);
    while (!behind_.empty() && LineAt(behind_.back()) < line + removed) {
        behind_.pop_back();
    }
    lineCount_ += added - removed;
}

void LineSet::DivideAt(Line line) {
    while (!above_.empty() && above_.back() >= line) {
        behind_.push_back(lineCount_ - above_.back().value());
        above_.pop_back();
    }
    while (!behind_.empty() && LineAt(behind_.back()) < line) {
        above_.push_back(LineAt(behind_.back()));
        behind_.pop_back();
    }
}

}  // namespace lintara::workspace
