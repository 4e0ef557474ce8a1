#include "workspace/word_index.h"

#include "workspace/characters.h"
#include "workspace/syntax.h"

#include <algorithm>
#include <bit>

namespace lintara::workspace {

namespace {

constexpr std::int32_t linesPerStretch = 4;
constexpr std::size_t longestProbe = 32;

}  // namespace

void WordIndex::CollectWords(TextView text, std::vector<Word>& words) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        const std::size_t begin = i;
        WordHash hash = 0;
        bool isNumber = true;
        for (; i < text.size() && IsWordCharacter(text[i]); ++i) {
            hash = std::rotl(hash, 5) ^ Fold(text[i]);
            isNumber = isNumber && IsDigit(text[i]);
        }
        if (i > begin && !isNumber) {
            words.push_back({text.substr(begin, i - begin), hash * 0x9E3779B1U});
        }
    }
}

WordIndex::WordIndex(const LineBuffer& lines, TextView anchor)
    : lines_(&lines), anchor_(FoldCase(anchor)), lineCountAtBuild_(lines.count()) {
    std::vector<Stretch> stretches;
    Text text;
    for (Line line{1}; line <= lines.last(); ++line) {
        if ((line.value() - 1) % linesPerStretch == 0) {
            stretches.push_back({line});
        }
        lines.Read(line, text);
        if (!HoldsAnchor(text)) {
            continue;
        }
        scratch_.clear();
        CollectWords(text, scratch_);
        const auto stretch = static_cast<StretchNumber>(stretches.size() - 1);
        for (const Word& word : scratch_) {
            std::vector<StretchNumber>& numbers = byWord_[word.hash];
            if (numbers.empty() || numbers.back() != stretch) {
                numbers.push_back(stretch);
                ++entriesAtBuild_;
            }
        }
    }
    if (stretches.empty()) {
        stretches.push_back({Line{1}});
    }
    stretches_ = ShiftedSequence<Stretch>(std::move(stretches));
}

bool WordIndex::HoldsAnchor(TextView text) const {
    // The rest of a word that is longer hardly ever differs, and to compare it at every place can take long.
    return FindWithoutCase(text, TextView(anchor_).substr(0, longestProbe)) != TextView::npos;
}

Line WordIndex::BeginOf(std::size_t i) const {
    return stretches_.Stored(i).begin + stretches_.PendingShift(i);
}

std::size_t WordIndex::StretchOf(Line line) const {
    const std::size_t after = stretches_.CountWhile([&](std::size_t i) { return BeginOf(i) <= line; });
    return after > 0 ? after - 1 : 0;
}

std::span<const WordIndex::StretchNumber> WordIndex::StretchesWith(WordHash word) const {
    const auto entry = byWord_.find(word);
    return entry == byWord_.end() ? std::span<const StretchNumber>{} : std::span(entry->second);
}

std::optional<LineRange> WordIndex::NextStretch(std::span<const Word> words, Line from) const {
    const auto rarest = std::ranges::min_element(
        words, {}, [&](const Word& word) { return StretchesWith(word.hash).size(); });
    const std::span<const StretchNumber> candidates = StretchesWith(rarest->hash);
    const auto first = std::ranges::lower_bound(candidates, static_cast<StretchNumber>(StretchOf(from)));
    for (auto stretch = first; stretch != candidates.end(); ++stretch) {
        const bool holdsAll = std::ranges::all_of(words, [&](const Word& word) {
            return word.hash == rarest->hash ||
                   std::ranges::binary_search(StretchesWith(word.hash), *stretch);
        });
        const bool isLast = *stretch + 1 == stretches_.size();
        const LineRange range{BeginOf(*stretch), isLast ? lines_->last() + 1 : BeginOf(*stretch + 1)};
        if (holdsAll && range.end > from && range.count() > 0) {
            return range;
        }
    }
    return std::nullopt;
}

void WordIndex::TextChanged(Line line, TextView text) {
    if (!HoldsAnchor(text)) {
        return;
    }
    scratch_.clear();
    CollectWords(text, scratch_);
    const auto stretch = static_cast<StretchNumber>(StretchOf(line));
    for (const Word& word : scratch_) {
        std::vector<StretchNumber>& numbers = byWord_[word.hash];
        const auto place = std::ranges::lower_bound(numbers, stretch);
        if (place == numbers.end() || *place != stretch) {
            numbers.insert(place, stretch);
            ++entriesAdded_;
        }
    }
}

void WordIndex::LinesMoved(Line line, std::int32_t removed, std::int32_t added) {
    // The new lines fall to the stretch that holds `line`; those behind it move, and those that began among
    // the removed lines begin behind the edit now.
    const std::size_t first = StretchOf(line) + 1;
    std::size_t next = first;
    while (next < stretches_.size() && BeginOf(next) < line + removed) {
        ++next;
    }
    stretches_.MoveShiftTo(next);
    for (std::size_t i = first; i < next; ++i) {
        stretches_.Settled(i).begin = line + added;
    }
    stretches_.Shift(added - removed);
    linesAdded_ += std::max(added - removed, 0);
}

}  // namespace lintara::workspace
