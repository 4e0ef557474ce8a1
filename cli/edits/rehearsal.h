// Tries an insertion on a copy of a component, to learn which procedures it has to leave alone as a whole.
//
// A handler is brought up to date by taking line numbers out first; what writes the numbers again comes later
// and may refuse to, when the numbers that the procedure had are gone. Lines that were deleted cannot be put
// back byte for byte, so this has to be known before the component itself is edited.
#pragma once

#include "cli/edits/procedure_editor.h"
#include "cli/scope/scope.h"

#include <functional>
#include <memory>

namespace lintara::cli {

// Makes an editor of that workspace, with all that it remembers of its own.
using EditorFactory = std::function<std::unique_ptr<ProcedureEditor>(workspace::Workspace& workspace)>;

// The procedures of the scope that the edits would leave without the numbers which they have, with the reason
// for leaving them as they are. The component stays as it is. Throws Refusal as the edits do.
[[nodiscard]] KeptProcedures FindNumbersAtRisk(const ScopedComponent& scope, const EditorFactory& makeEditor);

}  // namespace lintara::cli
