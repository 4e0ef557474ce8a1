// What one target of `Find` matches, and where: in some lines at a time. Which lines are looked at is the
// finder's business.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "hostmodel/code_module.h"
#include "workspace/line_buffer.h"
#include "workspace/search_window.h"
#include "workspace/text_searcher.h"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <vector>

namespace lintara::workspace {

struct Match {
    Position start;  // its first character
    Position end;    // the place just after its last one
};

// Whether a match of the target can reach from one line into the next.
[[nodiscard]] bool SpansLines(TextView target);

class TargetSearch {
  public:
    TargetSearch(TextView target, hostmodel::FindOptions options);

    [[nodiscard]] bool IsFor(TextView target, hostmodel::FindOptions options) const {
        return options == options_ && target == target_;
    }

    // How many lines one call of FindFrom goes through.
    [[nodiscard]] std::int32_t linesAtOnce() const { return window_.ownLines(); }

    // The first match that begins on one of the lines from `line` on, at `column` or behind it, and lies
    // wholly before `limit`.
    [[nodiscard]] std::optional<Match> FindFrom(const LineBuffer& lines, Line line, Column column,
                                                std::optional<Position> limit);
    // Whether a match stands in the text of a line; the target does not span lines.
    [[nodiscard]] bool MatchesIn(TextView line);

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

    // Whether what stands in front of the target's first wildcard may stand in the line; told quickly.
    [[nodiscard]] bool MayMatchIn(TextView line) const;
    [[nodiscard]] std::optional<Match> FindInWindow(Column column);
    [[nodiscard]] bool MatchesCharacter(char16_t item, std::size_t at) const;
    [[nodiscard]] bool MatchCharacters(std::size_t& item, std::size_t& at) const;
    [[nodiscard]] std::optional<std::size_t> MatchRest(std::size_t begin);
    [[nodiscard]] FailedRuns& FailedRunsOf(std::size_t item, std::size_t at);
    [[nodiscard]] bool MayBegin(std::size_t begin) const;
    [[nodiscard]] bool MayEnd(std::size_t end) const;

    Text target_;
    hostmodel::FindOptions options_;
    Text items_;                 // the target as it is compared: a pattern, folded
    std::size_t plainSize_ = 0;  // of what stands in front of the first wildcard
    TextSearcher plain_;
    std::optional<Position> limit_;
    SearchWindow window_;
    Text line_;
    std::vector<FailedRuns> failed_;  // per character of the pattern
    std::uint32_t windowNumber_ = 0;
    std::vector<Star> stars_;
};

}  // namespace lintara::workspace
