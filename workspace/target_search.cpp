#include "workspace/target_search.h"

#include "workspace/characters.h"

#include <algorithm>

namespace lintara::workspace {

namespace {

bool IsBreakCharacter(char16_t c) {
    return c == u'\r' || c == u'\n';
}

// The target as a pattern is read; several "*" in a row match what one does.
Text PatternOf(TextView target) {
    Text pattern(target);
    const auto [first, last] =
        std::ranges::unique(pattern, [](char16_t a, char16_t b) { return a == u'*' && b == u'*'; });
    pattern.erase(first, last);
    return pattern;
}

}  // namespace

bool SpansLines(TextView target) {
    return std::ranges::any_of(target, IsBreakCharacter);
}

TargetSearch::TargetSearch(TextView target, hostmodel::FindOptions options)
    : target_(target),
      options_(options),
      items_(options.patternSearch ? PatternOf(target) : target_),
      window_(static_cast<std::int32_t>(std::ranges::count_if(target, IsBreakCharacter)),
              !options.matchCase) {
    if (!options.matchCase) {
        items_ = FoldCase(items_);
    }
    if (options.patternSearch) {
        plainSize_ = std::min(items_.find_first_of(u"*?"), items_.size());
        failed_.resize(items_.size());
    } else {
        plainSize_ = items_.size();
    }
    plain_ = TextSearcher(items_.substr(0, plainSize_));
}

std::optional<Match> TargetSearch::FindFrom(const LineBuffer& lines, Line line, Column column,
                                            std::optional<Position> limit) {
    if (window_.ownLines() == 1) {
        lines.Read(line, line_);
        const auto ahead = std::min(static_cast<std::size_t>(column.value()) - 1, line_.size());
        if (!MayMatchIn(TextView(line_).substr(ahead))) {
            return std::nullopt;
        }
        window_.Hold(line_, line);
    } else {
        window_.MoveTo(lines, line);
    }
    limit_ = limit;
    return FindInWindow(column);
}

bool TargetSearch::MatchesIn(TextView line) {
    if (!MayMatchIn(line)) {
        return false;
    }
    window_.Hold(line, Line{1});
    limit_.reset();
    return FindInWindow(Column{1}).has_value();
}

bool TargetSearch::MayMatchIn(TextView line) const {
    // To compare all of a long target at every place can take long.
    constexpr std::size_t longestProbe = 32;
    const TextView probe = TextView(items_).substr(0, std::min(plainSize_, longestProbe));
    return FindWithoutCase(line, probe) != TextView::npos;
}

std::optional<Match> TargetSearch::FindInWindow(Column column) {
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

// "?" stands for a character of a line, so for none of the breaks between lines.
bool TargetSearch::MatchesCharacter(char16_t item, std::size_t at) const {
    const char16_t c = window_.text()[at];
    return item == u'?' ? !IsBreakCharacter(c) || at < window_.EndOfLine(at) : c == item;
}

// Matches the characters of the pattern from `item` up to its next "*" or its end; both arguments move on.
bool TargetSearch::MatchCharacters(std::size_t& item, std::size_t& at) const {
    for (; item < items_.size() && items_[item] != u'*'; ++item, ++at) {
        if (at == window_.text().size() || !MatchesCharacter(items_[item], at)) {
            return false;
        }
    }
    return true;
}

// The end of the match whose plain beginning stands at `begin`, with every "*" as long as it can be, the
// first one first. An empty match is none.
std::optional<std::size_t> TargetSearch::MatchRest(std::size_t begin) {
    stars_.clear();
    std::size_t item = plainSize_;
    std::size_t at = begin + plainSize_;
    while (true) {
        if (MatchCharacters(item, at)) {
            if (item < items_.size()) {
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
TargetSearch::FailedRuns& TargetSearch::FailedRunsOf(std::size_t item, std::size_t at) {
    FailedRuns& failed = failed_[item];
    const std::size_t lineEnd = window_.EndOfLine(at);
    if (failed.window != windowNumber_ || failed.lineEnd != lineEnd) {
        failed = {lineEnd, lineEnd + 1, windowNumber_};
    }
    return failed;
}

// Whether a match may begin or end at an offset: before the limit and, if whole words are wanted, at the edge
// of a word.
bool TargetSearch::MayBegin(std::size_t begin) const {
    return !options_.wholeWord || begin == 0 || !IsWordCharacter(window_.text()[begin - 1]);
}

bool TargetSearch::MayEnd(std::size_t end) const {
    return (!options_.wholeWord || end == window_.text().size() || !IsWordCharacter(window_.text()[end])) &&
           (!limit_ || window_.PositionOf(end) <= *limit_);
}

}  // namespace lintara::workspace
