#include "transform/replacement_guard.h"

namespace lintara::transform {

void ReplacementGuard::Rewritings::Count(Line line, std::size_t length) {
    if (line.value() > lastLine) {
        *this = {.lastLine = line.value(), .firstLength = length};
    }
    ++count;
}

void ReplacementGuard::PassBegins(Position from) {
    ++passes_;
    from_ = from;
    rewritten_ = false;
}

void ReplacementGuard::LineRewritten(Line line, std::size_t length, std::int32_t addedLines) {
    rewritten_ = true;
    ofLine_.Count(line, length);
    ofLineAndThoseMadeOfIt_.Count(line, length);
    ofLineAndThoseMadeOfIt_.lastLine += addedLines;
}

bool ReplacementGuard::MayPassAgain(Position next) const {
    const bool gotAhead = rewritten_ || next > from_;
    const bool feedsItself = ofLine_.AreTooMany() || (!rangeEnds_ && ofLineAndThoseMadeOfIt_.AreTooMany());
    return gotAhead && !feedsItself;
}

}  // namespace lintara::transform
