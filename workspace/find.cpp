#include "workspace/find.h"

#include "workspace/characters.h"
#include "workspace/syntax.h"
#include "workspace/text_searcher.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace lintara::workspace {

namespace {

constexpr TextView lineBreak = u"\r\n";

// Lines that are read one by one before the index is asked: most matches are near, or the range is short.
constexpr std::int32_t nearbyLines = 16;

// More indexes than the searches of one walk need are not kept.
constexpr std::size_t mostIndexes = 4;

bool IsBreakCharacter(char16_t c) {
    return c == u'\r' || c == u'\n';
}

// Some lines and, for a target that holds line breaks, as many behind them as a match can reach, joined by
// line breaks. Matches are sought that begin on the former, the window's own lines, or in their breaks.
class Window {
  public:
    Window(const LineBuffer& lines, std::int32_t linesBehind, bool fold)
        : lines_(&lines),
          linesBehind_(linesBehind),
          ownLines_(linesBehind == 0 ? 1 : std::max(linesBehind, nearbyLines)),
          fold_(fold) {}

    // Begins the window at `line`.
    void MoveTo(Line line) {
        first_ = line;
        begins_.assign(1, 0);
        lines_->Read(line, text_);
        const auto behind =
            std::min<std::int64_t>(std::int64_t{ownLines_} - 1 + linesBehind_, lines_->last() - line);
        for (std::int32_t i = 1; i <= behind; ++i) {
            text_ += lineBreak;
            begins_.push_back(text_.size());
            lines_->Read(line + i, piece_);
            text_ += piece_;
        }
        const auto own = static_cast<std::size_t>(ownLines_);
        ownSize_ = begins_.size() > own ? begins_[own] : text_.size();
        if (fold_) {
            std::ranges::transform(text_, text_.begin(), Fold);
        }
    }

    [[nodiscard]] std::int32_t ownLines() const { return ownLines_; }
    [[nodiscard]] TextView text() const { return text_; }
    // The characters at which a match can begin.
    [[nodiscard]] std::size_t ownSize() const { return ownSize_; }

    [[nodiscard]] Position PositionOf(std::size_t offset) const {
        const std::size_t number = LineNumber(offset);
        return {first_ + static_cast<std::int32_t>(number),
                Column{static_cast<std::int32_t>(offset - begins_[number]) + 1}};
    }

    // Of a column of the first line; a column behind its break means the beginning of the next line.
    [[nodiscard]] std::size_t OffsetOf(Column column) const {
        const std::size_t next = begins_.size() > 1 ? begins_[1] : text_.size();
        return std::min(static_cast<std::size_t>(column.value() - 1), next);
    }

    // Where the line ends that the offset lies on; the offset itself inside a line break.
    [[nodiscard]] std::size_t EndOfLine(std::size_t offset) const {
        const std::size_t next = LineNumber(offset) + 1;
        return next == begins_.size() ? text_.size() : std::max(begins_[next] - lineBreak.size(), offset);
    }

  private:
    // Of the line that the offset lies on, from 0.
    [[nodiscard]] std::size_t LineNumber(std::size_t offset) const {
        const auto after = std::ranges::upper_bound(begins_, offset);
        return static_cast<std::size_t>(after - begins_.begin()) - 1;
    }

    const LineBuffer* lines_;
    std::int32_t linesBehind_;
    std::int32_t ownLines_;
    bool fold_;
    Line first_{1};
    Text text_;
    Text piece_;
    std::vector<std::size_t> begins_;  // where each line begins in text_
    std::size_t ownSize_ = 0;
};

// The target as a pattern is read; several "*" in a row match what one does.
Text PatternOf(TextView target) {
    Text pattern(target);
    const auto [first, last] =
        std::ranges::unique(pattern, [](char16_t a, char16_t b) { return a == u'*' && b == u'*'; });
    pattern.erase(first, last);
    return pattern;
}

// One search: what is sought, and when a match counts.
class Search {
  public:
    Search(const LineBuffer& lines, TextView target, hostmodel::FindOptions options,
           std::optional<Position> limit)
        : target_(options.patternSearch ? PatternOf(target) : Text(target)),
          options_(options),
          limit_(limit),
          window_(lines, static_cast<std::int32_t>(std::ranges::count_if(target, IsBreakCharacter)),
                  !options.matchCase) {
        if (!options.matchCase) {
            target_ = FoldCase(target_);
        }
        if (options.patternSearch) {
            plainSize_ = std::min(target_.find_first_of(u"*?"), target_.size());
            failed_.resize(target_.size());
        } else {
            plainSize_ = target_.size();
        }
        plain_ = TextSearcher(target_.substr(0, plainSize_));
    }

    // How many lines one call of FindFrom goes through.
    [[nodiscard]] std::int32_t linesAtOnce() const { return window_.ownLines(); }

    // The first match that begins on one of the lines from `line` on, at `column` or behind it.
    std::optional<Match> FindFrom(Line line, Column column) {
        window_.MoveTo(line);
        ++windowNumber_;
        std::optional<Match> match;
        plain_.ForEach(window_.text(), window_.OffsetOf(column), [&](std::size_t begin) {
            if (begin >= window_.ownSize()) {
                return true;
            }
            if (const auto end = MayBegin(begin) ? MatchRest(begin) : std::nullopt) {
                match = {window_.PositionOf(begin), window_.PositionOf(*end)};
            }
            return match.has_value();
        });
        return match;
    }

  private:
    // What is known of a "*" on the line that ends at `lineEnd`: runs that end at `from` or behind it fail.
    struct FailedRuns {
        std::size_t lineEnd = 0;
        std::size_t from = 0;
        std::uint32_t window = 0;
    };

    struct Star {
        std::size_t item = 0;
        std::size_t shortest = 0;  // the end of its shortest run
        std::size_t untried = 0;   // the end of its longest run that was tried, or one behind all of them
    };

    // "?" stands for a character of a line, so for none of the breaks between lines.
    [[nodiscard]] bool MatchesCharacter(char16_t item, std::size_t at) const {
        const char16_t c = window_.text()[at];
        return item == u'?' ? !IsBreakCharacter(c) || at < window_.EndOfLine(at) : c == item;
    }

    // Matches the characters of the pattern from `item` up to its next "*" or its end; both arguments move
    // on.
    [[nodiscard]] bool MatchCharacters(std::size_t& item, std::size_t& at) const {
        for (; item < target_.size() && target_[item] != u'*'; ++item, ++at) {
            if (at == window_.text().size() || !MatchesCharacter(target_[item], at)) {
                return false;
            }
        }
        return true;
    }

    // The end of the match whose plain beginning stands at `begin`, with every "*" as long as it can be, the
    // first one first. An empty match is none.
    std::optional<std::size_t> MatchRest(std::size_t begin) {
        stars_.clear();
        std::size_t item = plainSize_;
        std::size_t at = begin + plainSize_;
        while (true) {
            if (MatchCharacters(item, at)) {
                if (item < target_.size()) {
                    stars_.push_back({item, at, FailedRunsOf(item, at).from});
                } else if (at > begin && MayEnd(at)) {
                    return at;
                }
            }
            while (!stars_.empty() && stars_.back().untried <= stars_.back().shortest) {
                std::size_t& from = failed_[stars_.back().item].from;
                from = std::min(from, stars_.back().shortest);
                stars_.pop_back();
            }
            if (stars_.empty()) {
                return std::nullopt;
            }
            at = --stars_.back().untried;
            item = stars_.back().item + 1;
        }
    }

    // For the "*" at `item` on the line of `at`.
    FailedRuns& FailedRunsOf(std::size_t item, std::size_t at) {
        FailedRuns& failed = failed_[item];
        const std::size_t lineEnd = window_.EndOfLine(at);
        if (failed.window != windowNumber_ || failed.lineEnd != lineEnd) {
            failed = {lineEnd, lineEnd + 1, windowNumber_};
        }
        return failed;
    }

    // Whether a match may begin or end at an offset: before the limit and, if whole words are wanted, at the
    // edge of a word.
    [[nodiscard]] bool MayBegin(std::size_t begin) const {
        return !options_.wholeWord || begin == 0 || !IsWordCharacter(window_.text()[begin - 1]);
    }
    [[nodiscard]] bool MayEnd(std::size_t end) const {
        return (!options_.wholeWord || end == window_.text().size() ||
                !IsWordCharacter(window_.text()[end])) &&
               (!limit_ || window_.PositionOf(end) <= *limit_);
    }

    Text target_;
    std::size_t plainSize_ = 0;  // of what stands in front of the first wildcard
    TextSearcher plain_;
    hostmodel::FindOptions options_;
    std::optional<Position> limit_;
    Window window_;
    std::vector<FailedRuns> failed_;  // per character of the pattern
    std::uint32_t windowNumber_ = 0;
    std::vector<Star> stars_;
};

// The words that stand whole in every match of `target`: all in a search for whole words, else those that do
// not touch its ends.
std::vector<WordIndex::Word> WholeWordsOf(TextView target, bool wholeWord) {
    if (!wholeWord) {
        target.remove_prefix(SkipWord(target, 0));
        while (!target.empty() && IsWordCharacter(target.back())) {
            target.remove_suffix(1);
        }
    }
    std::vector<WordIndex::Word> words;
    WordIndex::CollectWords(target, words);
    return words;
}

}  // namespace

std::optional<Match> Finder::Find(TextView target, Position start, Position end,
                                  hostmodel::FindOptions options) {
    if (target.empty() || start.line > lines_->last()) {
        return std::nullopt;
    }
    start = {std::max(start.line, Line{1}), std::max(start.column, Column{1})};
    const std::optional<Position> limit = LimitOf(start, end);
    const Line last = limit ? std::min(limit->line, lines_->last()) : lines_->last();
    Search search(*lines_, target, options, limit);

    std::vector<WordIndex::Word> words;
    if (!options.patternSearch && std::ranges::none_of(target, IsBreakCharacter)) {
        words = WholeWordsOf(target, options.wholeWord);
    }
    Column column = start.column;
    const WordIndex* index = IndexFor(words);
    Line searchedTo = words.empty() ? last : start.line + (index != nullptr ? -1 : nearbyLines);
    for (Line line = start.line; line <= last; column = Column{1}) {
        if (line > searchedTo) {
            if (index == nullptr) {
                index = &MakeIndex(words.front().text);
            }
            const auto stretch = index->NextStretch(words, line);
            if (!stretch || stretch->begin > last) {
                break;
            }
            if (stretch->begin > line) {
                line = stretch->begin;
                column = Column{1};
            }
            searchedTo = stretch->end - 1;
        }
        if (const auto match = search.FindFrom(line, column)) {
            return match;
        }
        line += std::min(search.linesAtOnce(), last - line + 1);
    }
    return std::nullopt;
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
    for (const std::unique_ptr<WordIndex>& index : indexes_) {
        index->TextChanged(line, text);
    }
    DropOutgrown();
}

void Finder::LinesMoved(Line line, std::int32_t removed, std::int32_t added) {
    for (const std::unique_ptr<WordIndex>& index : indexes_) {
        index->LinesMoved(line, removed, added);
    }
    DropOutgrown();
}

void Finder::DropOutgrown() {
    std::erase_if(indexes_, [](const std::unique_ptr<WordIndex>& index) { return index->outgrown(); });
}

}  // namespace lintara::workspace
