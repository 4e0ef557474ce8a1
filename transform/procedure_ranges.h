// Where the body of a procedure lies, and the bodies of the property procedures that share its name. All
// transformers of procedures ask here, at the moment when they need it: nothing is remembered, and edits
// inside one range shift the ranges below it.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "hostmodel/globals.h"

namespace lintara::transform {

// The range n goes from its first body line, Start, up to, not including, the line that closes it, End.
// Ranges 2 and 3 exist when their start is greater than 0. All lines are 0 when nothing was found.
struct ProcedureRanges {
    Line Start1;
    Line End1;
    bool Found = false;
    Line Start2;
    Line End2;
    Line Start3;
    Line End3;

    friend bool operator==(const ProcedureRanges&, const ProcedureRanges&) = default;
};

// Fills the ranges of a procedure of the named project's component. Its kind word is that of the component of
// the same name in the active project.
//
// Every host call may fail; its result then keeps its earlier value and the work goes on, so what is found
// may have an end before its start: a range without lines.
[[nodiscard]] ProcedureRanges GetProcedureRanges(hostmodel::Globals& globals, TextView projectName,
                                                 TextView componentName, TextView procedureName);

}  // namespace lintara::transform
