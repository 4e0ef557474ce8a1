// The statements of a procedure's body that lead to an error handler, or switch error handling off.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "hostmodel/globals.h"

namespace lintara::transform {

// Makes every statement of the body that leads to `from` lead to `to`; either is a label, or "0" for none.
// Any text that begins as such a statement counts, in comments and in front of longer labels too. The body's
// lines go from `start` up to, not including, its closing line `end`; the component is that of the active
// project.
void RedirectHandlerStatements(hostmodel::Globals& globals, TextView componentName, TextView from,
                               TextView to, Line start, Line end);

}  // namespace lintara::transform
