#include "workspace/find.h"

#include "workspace/characters.h"

#include <algorithm>

namespace lintara::workspace {

namespace {

// Lines that are read one by one before any help is asked for: most matches are near, or the range is short.
constexpr std::int32_t nearbyLines = 16;

// More indexes than the searches of one walk need are not kept.
constexpr std::size_t mostIndexes = 4;

// The words that stand whole in every match of `target`, which spans no lines.
std::vector<WordIndex::Word> WholeWordsOf(TextView target, hostmodel::FindOptions options) {
    std::vector<WordIndex::Word> words;
    if (options.wholeWord && !options.patternSearch) {
        WordIndex::CollectWords(target, words);
    }
    return words;
}

}  // namespace

std::optional<Match> Finder::Find(TextView target, Position start, Position end,
                                  hostmodel::FindOptions options) {
    if (target.empty() || start.line > lines_->last()) {
        return std::nullopt;
    }
    const Stretch stretch = StretchOf(start, end);
    std::int32_t linesRead = 0;
    if (SpansLines(target)) {
        TargetSearch search(target, options);
        return FindByReading(search, {}, stretch, linesRead);
    }
    if (const auto known = memory_.LinesOf(target, options)) {
        return FindInKnown(known->search, known->lines, stretch);
    }
    TargetSearch search(target, options);
    const auto match = FindByReading(search, WholeWordsOf(target, options), stretch, linesRead);
    if (linesRead > nearbyLines) {
        memory_.SearchRead(target, options, linesRead);
    }
    return match;
}

Finder::Stretch Finder::StretchOf(Position start, Position end) const {
    start = {std::max(start.line, Line{1}), std::max(start.column, Column{1})};
    const std::optional<Position> limit = LimitOf(start, end);
    return {start, limit, limit ? std::min(limit->line, lines_->last()) : lines_->last()};
}

std::optional<Position> Finder::LimitOf(Position start, Position end) const {
    if (end.line == Line{-1}) {
        return std::nullopt;
    }
    if (end.column == Column{-1}) {
        end.column = Column{1};
        if (end.line >= Line{1} && end.line <= lines_->last()) {
            Text text;
            lines_->Read(end.line, text);
            end.column += static_cast<std::int32_t>(text.size());
        }
    }
    return end > start ? std::optional(end) : std::nullopt;
}

std::optional<Match> Finder::FindInKnown(TargetSearch& search, const LineSet& known,
                                         const Stretch& stretch) const {
    auto line = known.NextFrom(stretch.start.line);
    while (line && *line <= stretch.last) {
        const Column column = *line == stretch.start.line ? stretch.start.column : Column{1};
        if (const auto match = search.FindFrom(*lines_, *line, column, stretch.limit)) {
            return match;
        }
        line = known.NextFrom(*line + 1);
    }
    return std::nullopt;
}

std::optional<Match> Finder::FindByReading(TargetSearch& search, std::span<const WordIndex::Word> words,
                                           const Stretch& stretch, std::int32_t& linesRead) {
    const auto anchor = std::ranges::find_if(words, WordIndex::CanBeAnchor);
    if (anchor == words.end()) {
        words = {};
    }
    const WordIndex* index = IndexFor(words);
    const Line last = stretch.last;
    Line searchedTo = words.empty() ? last : stretch.start.line + (index != nullptr ? -1 : nearbyLines);
    Column column = stretch.start.column;
    for (Line line = stretch.start.line; line <= last; column = Column{1}) {
        if (line > searchedTo) {
            if (index == nullptr) {
                index = &MakeIndex(anchor->text);
            }
            const auto next = index->NextStretch(words, line);
            if (!next || next->begin > last) {
                break;
            }
            if (next->begin > line) {
                line = next->begin;
                column = Column{1};
            }
            searchedTo = next->end - 1;
        }
        if (const auto match = search.FindFrom(*lines_, line, column, stretch.limit)) {
            return match;
        }
        const std::int32_t read = std::min(search.linesAtOnce(), last - line + 1);
        line += read;
        linesRead += read;
    }
    return std::nullopt;
}

const WordIndex* Finder::IndexFor(std::span<const WordIndex::Word> words) const {
    for (const std::unique_ptr<WordIndex>& index : indexes_) {
        if (std::ranges::any_of(words,
                                [&](const auto& word) { return SameName(word.text, index->anchor()); })) {
            return index.get();
        }
    }
    return nullptr;
}

const WordIndex& Finder::MakeIndex(TextView anchor) {
    if (indexes_.size() == mostIndexes) {
        indexes_.erase(indexes_.begin());
    }
    return *indexes_.emplace_back(std::make_unique<WordIndex>(*lines_, anchor));
}

void Finder::TextChanged(Line line, TextView text) {
    memory_.TextChanged(line, text);
    for (const std::unique_ptr<WordIndex>& index : indexes_) {
        index->TextChanged(line, text);
    }
    DropOutgrown();
}

void Finder::LinesMoved(Line line, std::int32_t removed, std::int32_t added) {
    memory_.LinesMoved(line, removed, added);
    for (const std::unique_ptr<WordIndex>& index : indexes_) {
        index->LinesMoved(line, removed, added);
    }
    DropOutgrown();
}

void Finder::DropOutgrown() {
    std::erase_if(indexes_, [](const std::unique_ptr<WordIndex>& index) { return index->outgrown(); });
}

void Finder::Forget() {
    memory_.Forget();
    indexes_.clear();
}

}  // namespace lintara::workspace
