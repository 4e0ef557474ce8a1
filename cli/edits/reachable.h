// Components that the library would not find by their names.
#pragma once

#include "cli/scope/scope.h"
#include "workspace/workspace.h"

namespace lintara::cli {

// The library looks projects and components up by their names and finds the first.
[[nodiscard]] inline bool IsReachable(const workspace::Workspace& workspace, const ScopedComponent& scope) {
    return workspace.Find(scope.project->name()) == scope.project &&
           scope.project->Find(scope.component->name) == scope.component;
}

}  // namespace lintara::cli
