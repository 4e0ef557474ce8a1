// Replaces a text within some lines of a component of the active project, line by line. Letter case does not
// matter, and no character of the sought text is special. Hosts call it, and so do the operations on error
// handlers.
//
// Each search goes on, on the line of the match, from the column at which the match ended in the old text. So
// a longer replacement may be searched in part, and a shorter one may hide what stood close behind. A match
// that spans lines counts as found and is never replaced.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "hostmodel/globals.h"

namespace lintara::transform {

struct ReplaceOptions {
    bool wholeWord = false;
    // Write a line by deleting it and inserting the new one, instead of replacing it. Both give the same
    // text; an attribute line hidden behind a deleted line goes with it.
    bool goThroughDelete = false;
};

// Replaces from `startLine` to `endLine`, both included. `foundAny` tells whether the text was found at all:
// in the component behind `endLine` too, where the search stops. Nothing is found when `startLine` is greater
// than `endLine`; an `endLine` below 1 finds to the end of the component and replaces nothing. `foundAny` is
// right at any moment, should the host throw.
//
// A line that the host does not give keeps the text of the line read before it, and one that it does not take
// is left; the work goes on behind it. A replacement that would never end (replacement_guard.h) is stopped.
void SearchAndReplace(hostmodel::Globals& globals, TextView componentName, TextView sought,
                      TextView replacement, Line startLine, Line endLine, ReplaceOptions options,
                      bool& foundAny);

}  // namespace lintara::transform
