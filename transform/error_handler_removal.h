// Takes the error handler that was inserted into a procedure, or into all procedures of a property, out
// again. Its marker comment alone tells where it is; a handler that somebody wrote by hand stays.
//
// A host walks its scope and calls this once per procedure name.
#pragma once

#include "base/settings_store.h"
#include "base/text.h"
#include "hostmodel/globals.h"

namespace lintara::transform {

// Deletes everything from the marker down to the closing line, that which the user added below the handler
// too. The statements that led to the handler's label become "On Error GoTo 0" and stay: in the component of
// that name in the active project, and by the label that the settings hold now ("hErr" without any, or when
// `settings` is null).
//
// What the host refuses is left out and the rest done.
void ErrorHandlerRemover(hostmodel::Globals& globals, SettingsStore* settings, TextView projectName,
                         TextView componentName, TextView procedureName);

}  // namespace lintara::transform
