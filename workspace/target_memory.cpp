#include "workspace/target_memory.h"

#include <algorithm>

namespace lintara::workspace {

namespace {

// More than one walk asks for again and again.
constexpr std::size_t mostTargets = 8;

// Longer than any line that the IDE accepts; targets beyond that are not worth their room.
constexpr std::size_t longestTarget = 1024;

}  // namespace

std::optional<TargetMemory::Known> TargetMemory::LinesOf(TextView target, hostmodel::FindOptions options) {
    Target* known = Recall(target, options);
    if (known == nullptr) {
        return std::nullopt;
    }
    known->idleEdits = 0;
    if (!known->lines && known->linesRead >= lines_->count()) {
        ReadLines(*known);
    }
    return known->lines ? std::optional(Known{known->search, *known->lines}) : std::nullopt;
}

void TargetMemory::SearchRead(TextView target, hostmodel::FindOptions options, std::int32_t lineCount) {
    if (target.size() > longestTarget) {
        return;
    }
    Target* known = Recall(target, options);
    if (known == nullptr) {
        if (recent_.size() == mostTargets) {
            recent_.erase(recent_.begin());
        }
        known = &recent_.emplace_back(Target{.search = {target, options}});
    }
    known->linesRead += lineCount;
}

TargetMemory::Target* TargetMemory::Recall(TextView target, hostmodel::FindOptions options) {
    const auto known = std::ranges::find_if(
        recent_, [&](const Target& recent) { return recent.search.IsFor(target, options); });
    if (known == recent_.end()) {
        return nullptr;
    }
    std::rotate(known, known + 1, recent_.end());
    return &recent_.back();
}

void TargetMemory::ReadLines(Target& target) const {
    target.lines.emplace(lines_->count());
    Text text;
    for (Line line{1}; line <= lines_->last(); ++line) {
        lines_->Read(line, text);
        if (target.search.MatchesIn(text)) {
            target.lines->Insert(line);
        }
    }
}

void TargetMemory::TextChanged(Line line, TextView text) {
    for (Target& target : recent_) {
        if (!target.lines) {
            continue;
        }
        if (++target.idleEdits > lines_->count()) {
            target.lines.reset();
            target.linesRead = 0;
            continue;
        }
        const bool matches = target.search.MatchesIn(text);
        if (matches == target.lines->Contains(line)) {
            continue;
        }
        if (matches) {
            target.lines->Insert(line);
        } else {
            target.lines->Erase(line);
        }
    }
}

void TargetMemory::LinesMoved(Line line, std::int32_t removed, std::int32_t added) {
    for (Target& target : recent_) {
        if (target.lines) {
            target.lines->LinesMoved(line, removed, added);
        }
    }
}

}  // namespace lintara::workspace
