// Ends a replacement that would not end by itself: one whose replacement text holds the sought text, so that
// it finds its own output again and again, a match across lines that is found again at the same place, or a
// host that always has one more match. A replacement that does come to an end is not cut short.
#pragma once

#include "base/position.h"
#include "base/text.h"

#include <cstddef>
#include <cstdint>
#include <optional>

namespace lintara::transform {

class ReplacementGuard {
  public:
    // A pass found a match; its search began at `from`.
    void PassBegins(Position from);
    // The pass has rewritten `line`. Its text was `oldText`; it and what now follows it in the replaced text
    // are `addedLines` + 1 lines.
    void LineRewritten(Line line, TextView oldText, std::int32_t addedLines);
    // Whether there may be another pass, whose search would begin at `next`: not after a pass that rewrote
    // nothing and did not get ahead, nor when a line was rewritten more often than it had characters, plus
    // one.
    [[nodiscard]] bool MayPassAgain(Position next);

  private:
    // That many passes in a row that rewrote nothing but what earlier passes had written are too many: it is
    // more than the IDE takes lines into a module.
    static constexpr std::int32_t MostBarrenPasses = 65536;

    Position from_;
    bool rewritten_ = false;  // in this pass
    std::int32_t barrenPasses_ = 0;

    std::optional<Line> line_;     // the last one that was rewritten
    std::size_t firstLength_ = 0;  // its length before that
    std::size_t rewritings_ = 0;   // how often
    std::int64_t untouched_ = 0;   // no line from here on was rewritten
};

}  // namespace lintara::transform
