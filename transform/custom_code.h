// Drops a block of the user's own code into a procedure, or into all procedures of a property, and takes it
// out again. Two marker comments with a number stand around the block; without them it cannot be found again.
//
// A host walks its scope and calls these once per procedure name.
#pragma once

#include "base/text.h"
#include "hostmodel/globals.h"
#include "transform/templates.h"

#include <cstdint>

namespace lintara::transform {

// Where a block goes. A host hands these over as numbers; any other number inserts nothing.
enum class CodePlace : std::int16_t {
    AfterFirstLine = 1,  // the first lines of the body
    BeforeLastLine = 2,  // in front of the closing line
    AtLine = 3,          // at a line counted from the first one of the body
};

struct CustomCode {
    TextView code;  // a template, expanded for the procedure; one or more lines
    bool noDelimiters = false;
    CodePlace place = CodePlace::AfterFirstLine;
    // For AtLine, from 1. A line greater than the closing line's number in the module inserts nothing, by a
    // comparison of a count with a place: in a procedure far down, a line behind its end is accepted and lies
    // outside it.
    std::int32_t line = 1;
    std::int16_t id = 0;  // what both markers end with
};

// A procedure whose body begins at the first line behind the declarations, as that of an external procedure
// declared there would, is left alone by both operations.
//
// What the host refuses is left out and the rest done.
void CustomCodeInserter(const TemplateSources& sources, TextView projectName, TextView componentName,
                        TextView procedureName, const CustomCode& block);

// Removes one block of that number from each body, with its markers. The number is sought as the beginning of
// a number: 1 finds the markers of 12 too. The first end marker counts, and only below the begin marker.
// In an empty body the host's search goes on to the end of the module, and finds the blocks below it.
void CustomCodeRemover(hostmodel::Globals& globals, TextView projectName, TextView componentName,
                       TextView procedureName, std::int16_t id);

}  // namespace lintara::transform
