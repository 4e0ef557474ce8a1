// Ends a replacement that would not end by itself: one whose replacement text holds the sought text, so that
// it finds its own output again and again; a match across lines that is found again at the same place; or a
// host that always has one more match. What comes to an end by itself is not cut short.
//
// The ends are a pass that wrote nothing and did not get ahead, and a line that was rewritten more often than
// it had characters at first, plus one. Where the replacement text has line breaks, the line and those that
// were made of it count as one line too, but only in a range whose end no module reaches: every other range
// ends by itself.
//
// Until it is stopped, a replacement that finds itself lengthens its line with every pass. That costs as much
// time as the square of the line's length, times the length of the replacement text: seconds for a thousand
// characters replaced by a thousand, minutes for ten thousand.
#pragma once

#include "base/position.h"

#include <cstddef>
#include <cstdint>
#include <limits>

namespace lintara::transform {

class ReplacementGuard {
  public:
    // For a replacement down to `endLine`.
    explicit ReplacementGuard(Line endLine) : rangeEnds_(endLine < UnreachedLine) {}

    // A pass begins, whose search begins at `from`.
    void PassBegins(Position from);
    // The pass has rewritten `line`, which had `length` characters; it and what now follows it in the new
    // text are `addedLines` + 1 lines.
    void LineRewritten(Line line, std::size_t length, std::int32_t addedLines);

    // Whether there may be another pass, whose search would begin at `next`.
    [[nodiscard]] bool MayPassAgain(Position next) const;
    // Whether it is time, in this pass, to look whether the module has the place of the match. A host that
    // finds what is nowhere may find for ever.
    [[nodiscard]] bool DoubtsHost() const { return passes_ % TrustedPasses == 0; }

  private:
    // Far more lines than the IDE takes into a module.
    static constexpr Line UnreachedLine{1 << 22};
    static constexpr std::int64_t TrustedPasses = 65536;

    // How often some adjacent lines were rewritten. Searching goes downwards: the first line below them
    // begins a new count.
    struct Rewritings {
        std::int64_t lastLine = std::numeric_limits<std::int64_t>::min();
        std::size_t firstLength = 0;
        std::size_t count = 0;

        void Count(Line line, std::size_t length);
        [[nodiscard]] bool AreTooMany() const { return count > firstLength + 1; }
    };

    bool rangeEnds_;
    std::int64_t passes_ = 0;
    Position from_;
    bool rewritten_ = false;  // in this pass
    Rewritings ofLine_;
    Rewritings ofLineAndThoseMadeOfIt_;
};

}  // namespace lintara::transform
