// What a command leaves out of its scope although its other options take it: what --exclude names, and what
// says so itself, in a comment "' lintara: skip".
#pragma once

#include "cli/scope/scope.h"
#include "workspace/workspace.h"

#include <string>
#include <vector>

namespace lintara::cli {

// Leaves out of `scope`
// - what a pattern names: Component or Component.Procedure, and, when there are several projects,
//   Project.Component or Project.Component.Procedure; a pattern that names nothing is no mistake;
// - a component with the comment in its declarations;
// - a procedure with the comment in the lines above its header. The name as a whole is left out when any
//   procedure that the library reaches by it has the comment, as it cannot leave out one of a property's.
//
// Letter case and blanks in the comment do not matter, and text may follow it.
void LeaveOutExcluded(const workspace::Workspace& workspace, const std::vector<std::string>& patterns,
                      std::vector<ScopedComponent>& scope);

// A sentence, with near names, for each pattern of `options` that must leave out something and names neither
// a component nor a procedure of the workspace.
[[nodiscard]] std::vector<std::string> UnmatchedExclusions(const workspace::Workspace& workspace,
                                                           const ScopeOptions& options);

// Whether the line is such a comment.
[[nodiscard]] bool IsSkipComment(TextView line);

}  // namespace lintara::cli
