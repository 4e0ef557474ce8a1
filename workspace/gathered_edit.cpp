#include "workspace/gathered_edit.h"

namespace lintara::workspace {

bool GatheredEdit::Takes(Line line) const {
    const bool isBehind = !empty_ && line == End() && line > Line{1};
    return Covers(line) || (isBehind && lines_->EndsInUnderscore(line - 1));
}

void GatheredEdit::Add(Line line, std::int32_t removed, std::int32_t added, bool lastContinued) {
    const bool isFirst = empty_;
    if (isFirst) {
        empty_ = false;
        begin_ = reader_.StartOf(line);
        removed_ = line - begin_;
        added_ = removed_;
    }
    // Lines count here as before the edit. Those behind the gathered ones were not edited yet, so that what
    // ends a logical line among them did so before all edits.
    const std::int32_t delta = added - removed;
    Line reached = line + removed;
    if (isFirst || reached > End()) {
        if (lastContinued) {
            reached = reader_.EndOf(line + added) - delta;
        }
        const std::int32_t more = reached - End();
        removed_ += more;
        added_ += more;
    }
    added_ += delta;
}

}  // namespace lintara::workspace
