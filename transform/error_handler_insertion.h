// Gives one procedure, or all procedures of a property, an error handler: a block in front of the closing
// line, made of a marker comment, "Exit Sub" (or what leaves the procedure), the label and the user's code;
// and the statement that leads to the label as the first line of the body. Statements in the body that switch
// error handling off lead to the label too.
//
// A host walks its scope and calls this once per procedure name. A body that holds the marker is left alone,
// so nothing is inserted twice.
#pragma once

#include "base/text.h"
#include "hostmodel/globals.h"
#include "transform/templates.h"

namespace lintara::transform {

// `label` is written as it is, `code` is a template that is expanded for the procedure. The code goes into
// the named project; the statements that switch error handling off, the kind word and the template are those
// of the component of that name in the active project.
//
// What the host refuses is left out and the rest done. An empty body is taken to have a handler when any
// procedure below it has one: the host's search does not end at its closing line.
void ErrorHandlerInserter(const TemplateSources& sources, TextView projectName, TextView componentName,
                          TextView procedureName, TextView label, TextView code);

}  // namespace lintara::transform
