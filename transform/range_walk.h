// The walk over the ranges of a procedure that is edited so that lines move: each range is asked for when its
// turn comes. The operations on error handlers and on custom code use it; the line numbers, which move no
// line, ask once.
#pragma once

#include "base/text.h"
#include "hostmodel/globals.h"
#include "transform/procedure_ranges.h"

namespace lintara::transform {

// A procedure by the names of all that holds it.
struct ProcedurePath {
    TextView projectName;
    TextView componentName;
    TextView procedureName;
};

[[nodiscard]] inline ProcedureRanges RangesOf(hostmodel::Globals& globals, const ProcedurePath& path) {
    return GetProcedureRanges(globals, path.projectName, path.componentName, path.procedureName);
}

// Calls `treat` with the start and the end of range 1 of `ranges`; then, if the procedure has a range 2, with
// that range as a new question finds it; then so with range 3, if the record now in hand has one. What a new
// question finds is treated as it is: zeros, when it finds nothing.
template <class Treat>
void TreatEachRange(hostmodel::Globals& globals, const ProcedurePath& path, ProcedureRanges ranges,
                    Treat treat) {
    constexpr Line None{0};
    treat(ranges.Start1, ranges.End1);
    if (ranges.Start2 > None) {
        ranges = RangesOf(globals, path);
        treat(ranges.Start2, ranges.End2);
    }
    if (ranges.Start3 > None) {
        ranges = RangesOf(globals, path);
        treat(ranges.Start3, ranges.End3);
    }
}

}  // namespace lintara::transform
