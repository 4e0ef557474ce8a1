// Shows procedure ranges for people: "4-9" per range, "; " between them, "not found" where nothing was found.
#pragma once

#include "transform/procedure_ranges.h"

#include <string>

namespace lintara::support {

[[nodiscard]] inline std::string ToString(const transform::ProcedureRanges& ranges) {
    if (ranges == transform::ProcedureRanges{}) {
        return "not found";
    }
    const auto range = [](Line start, Line end) {
        return std::to_string(start.value()) + "-" + std::to_string(end.value());
    };
    return (ranges.Found ? "" : "not found, but ") + range(ranges.Start1, ranges.End1) + "; " +
           range(ranges.Start2, ranges.End2) + "; " + range(ranges.Start3, ranges.End3);
}

}  // namespace lintara::support
