// Whether the library would edit exactly the bodies of the procedures that it is asked for. It finds them by
// text searches, which comments behind closing lines, long headers and texts that look like headers mislead.
#pragma once

#include "cli/scope/procedure_groups.h"
#include "transform/procedure_ranges.h"
#include "workspace/module.h"

#include <optional>
#include <string>
#include <vector>

namespace lintara::cli {

// The ranges that the library would visit, sorted; those without lines are left out.
[[nodiscard]] std::vector<LineRange> RangesToVisit(const transform::ProcedureRanges& ranges);

struct RangeMismatch {
    Line line;            // where to look
    std::string message;  // what differs
};

// None when the ranges are the bodies of the procedures that the group reaches, each once.
[[nodiscard]] std::optional<RangeMismatch> CompareRanges(const transform::ProcedureRanges& ranges,
                                                         const ProcedureGroup& group,
                                                         const workspace::Module& module);

}  // namespace lintara::cli
