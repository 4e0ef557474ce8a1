#include "cli/project/logical_lines.h"

#include "workspace/syntax.h"

namespace lintara::cli {

bool LogicalLines::Next() {
    first_ = end_;
    if (first_ == lines_.size()) {
        return false;
    }
    end_ = first_ + 1;
    if (!workspace::Continues(lines_[first_])) {
        return true;
    }
    joined_ = lines_[first_];
    while (end_ < lines_.size() && workspace::Continues(lines_[end_ - 1])) {
        joined_.pop_back();
        joined_ += lines_[end_++];
    }
    return true;
}

}  // namespace lintara::cli
