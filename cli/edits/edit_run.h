// The course of every command that edits a project: opens it, edits the components of the scope in memory,
// then saves, shows or counts what has changed.
#pragma once

#include "cli/environment.h"
#include "cli/exit_status.h"
#include "cli/invariants/edit_rules.h"
#include "cli/options.h"
#include "cli/output/report.h"
#include "cli/scope/scope.h"
#include "hostmodel/globals.h"
#include "workspace/save_options.h"
#include "workspace/workspace.h"

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::cli {

class ComponentEditor {
  public:
    virtual ~ComponentEditor() = default;

    // Edits one component, and tells all about it but the number of lines that changed. Throws Refusal.
    [[nodiscard]] virtual ComponentReport Edit(const ScopedComponent& scope) = 0;
};

// What one command does with the components.
struct EditJob {
    std::string_view command;  // as the report names it
    std::string_view stage;    // as the progress bar names it
    std::string done;          // how the summary begins: "Numbered"
    std::string wouldDo;       // the same with --check: "Would number"
    // `globals` show `workspace`.
    std::function<std::unique_ptr<ComponentEditor>(workspace::Workspace& workspace,
                                                   std::shared_ptr<hostmodel::Globals> globals)>
        makeEditor;
    // Whether each component is edited by itself: no editor sees what another one did, or asks the machine.
    // Several editors may work at the same time then, each on another component.
    bool independent = false;
    // Whether an editor may ask how components were loaded that another one has edited already.
    bool asksForLoaded = false;
    // What it may do to them: what it did is held against this before anything is written or shown.
    EditRules rules = {};
    // What a copy gets on top of the projects' files; empty: nothing.
    std::function<std::vector<workspace::AddedFile>(const workspace::Workspace& workspace)> addedToCopy = {};
};

// Whether a run with that end wrote its edits, or found that there was nothing to write: what it was given
// may be remembered then.
[[nodiscard]] bool WroteWhatWasAsked(ExitStatus status, const EditOptions& edit);

ExitStatus RunEdit(const EditCommandOptions& options, const EditJob& job, Environment& environment);

}  // namespace lintara::cli
