// Which components and procedures a command works on.
#pragma once

#include "cli/options.h"
#include "cli/scope/procedure_groups.h"
#include "workspace/workspace.h"

#include <expected>
#include <optional>
#include <string>
#include <vector>

namespace lintara::cli {

struct ScopedComponent {
    workspace::Project* project = nullptr;
    workspace::Component* component = nullptr;
    std::vector<ProcedureGroup> groups;  // in order of appearance, a name once
};

// Without what is excluded (cli/exclusions.h). The error names the option and what it does not find, and
// suggests near names.
[[nodiscard]] std::expected<std::vector<ScopedComponent>, std::string> ResolveScope(
    const workspace::Workspace& workspace, const ScopeOptions& options);

// The component that a caret names, with its project. The line may lie outside the module.
[[nodiscard]] std::expected<ScopedComponent, std::string> FindCaretComponent(
    const workspace::Workspace& workspace, const CaretPlace& place);

// What is wrong with the caret's line, if it lies outside the component's module.
[[nodiscard]] std::optional<std::string> CheckCaretLine(const ScopedComponent& found,
                                                        const CaretPlace& place);

}  // namespace lintara::cli
