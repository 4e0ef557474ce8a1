// The control whose event procedure a member is: "cmdOK" for cmdOK_Click in a form that has such a control.
// The object's own events count too: "Form" for Form_Load in a form.
//
// Controls are read from the component's designer by late binding. "" where the member is no event procedure
// of that kind, where the component has no designer, and where the host fails.
#pragma once

#include "base/text.h"
#include "hostmodel/globals.h"

namespace lintara::transform {

// For a member of the active project.
[[nodiscard]] Text ControlNameOf(hostmodel::Globals& globals, TextView componentName, TextView memberName);

// For the member under the caret of the active code window.
[[nodiscard]] Text ActiveControlName(hostmodel::Globals& globals);

}  // namespace lintara::transform
