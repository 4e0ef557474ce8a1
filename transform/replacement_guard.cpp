#include "transform/replacement_guard.h"

namespace lintara::transform {

void ReplacementGuard::PassBegins(Position from) {
    from_ = from;
    rewritten_ = false;
}

void ReplacementGuard::LineRewritten(Line line, TextView oldText, std::int32_t addedLines) {
    rewritten_ = true;
    // Searching goes downwards, so a line above the last one is no new one.
    if (!line_ || line > *line_) {
        const bool written = line_ && line.value() < untouched_;
        barrenPasses_ = written ? barrenPasses_ + 1 : 0;
        untouched_ = written ? untouched_ : std::int64_t{line.value()} + 1;
        line_ = line;
        firstLength_ = oldText.size();
        rewritings_ = 0;
    }
    ++rewritings_;
    untouched_ += addedLines;
}

bool ReplacementGuard::MayPassAgain(Position next) {
    if (!rewritten_) {
        ++barrenPasses_;
        if (next <= from_) {
            return false;
        }
    }
    return barrenPasses_ <= MostBarrenPasses && rewritings_ <= firstLength_ + 1;
}

}  // namespace lintara::transform
