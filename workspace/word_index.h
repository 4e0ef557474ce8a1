// Tells the stretches of a module that can hold a text, by the words that stand in its lines. `Find` asks it
// where to look, so that the many searches of one walk over a long module do not each read the module again.
//
// Such searches have a word in common ("Property" in those for property procedures). An index is made for one
// such word, its anchor, and knows only the lines in which the anchor stands: they are quickly told from the
// many others. It may name a stretch that no longer holds a text, never miss one that does.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "workspace/line_buffer.h"
#include "workspace/shifted_sequence.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <unordered_map>
#include <vector>

namespace lintara::workspace {

class WordIndex {
  public:
    using WordHash = std::uint32_t;

    // A word worth looking for: a run of letters, digits and underscores that is no number.
    struct Word {
        TextView text;      // within the text that was read
        WordHash hash = 0;  // without regard to case
    };
    static void CollectWords(TextView text, std::vector<Word>& words);
    // Whether the word is long enough to tell the lines it stands in from most others.
    [[nodiscard]] static bool CanBeAnchor(const Word& word) { return word.text.size() >= 3; }

    // Reads all lines. The buffer must outlive the index.
    WordIndex(const LineBuffer& lines, TextView anchor);

    [[nodiscard]] TextView anchor() const { return anchor_; }

    // The first stretch that ends below `from` and in which every one of `words` stands in lines with the
    // anchor, which is one of them.
    [[nodiscard]] std::optional<LineRange> NextStretch(std::span<const Word> words, Line from) const;

    // Tells the index that the text of `line` is `text` now.
    void TextChanged(Line line, TextView text);
    // Tells the index that `removed` lines from `line` on gave way to `added` new ones, whose words are to be
    // told by TextChanged.
    void LinesMoved(Line line, std::int32_t removed, std::int32_t added);

    // Whether so much came in that the index has lost its use or holds mostly what is gone; then it is to be
    // made anew.
    [[nodiscard]] bool outgrown() const {
        return linesAdded_ > lineCountAtBuild_ / 2 + 256 || entriesAdded_ > entriesAtBuild_ + 4096;
    }

  private:
    using StretchNumber = std::uint32_t;

    struct Stretch {
        Line begin;
        void ShiftBy(std::int32_t lines) { begin += lines; }
    };

    // Whether the anchor's first characters stand in the text, as a word or within one.
    [[nodiscard]] bool HoldsAnchor(TextView text) const;
    [[nodiscard]] Line BeginOf(std::size_t i) const;
    // The stretch that holds `line`.
    [[nodiscard]] std::size_t StretchOf(Line line) const;
    [[nodiscard]] std::span<const StretchNumber> StretchesWith(WordHash word) const;

    const LineBuffer* lines_;
    Text anchor_;  // folded
    ShiftedSequence<Stretch> stretches_;
    std::unordered_map<WordHash, std::vector<StretchNumber>> byWord_;  // ascending
    std::int32_t lineCountAtBuild_ = 0;
    std::int32_t linesAdded_ = 0;
    std::size_t entriesAtBuild_ = 0;
    std::size_t entriesAdded_ = 0;
    std::vector<Word> scratch_;
};

}  // namespace lintara::workspace
