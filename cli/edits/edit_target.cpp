#include "cli/edits/edit_target.h"

#include "cli/guards/range_guard.h"

namespace lintara::cli {

std::optional<Skip> CheckRanges(const EditTarget& target, const ProcedureGroup& group) {
    auto mismatch = CompareRanges(target.RangesOf(group), group, target.module);
    if (!mismatch) {
        return std::nullopt;
    }
    return Skip{SkipReason::RangeMismatch, mismatch->line, std::move(mismatch->message)};
}

}  // namespace lintara::cli
