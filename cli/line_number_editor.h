// Walks the procedures of components and hands each name to the library once, guarded or exactly.
#pragma once

#include "assistant/lintara.h"
#include "cli/guarded_insertion.h"
#include "cli/guarded_removal.h"
#include "cli/options.h"
#include "cli/report.h"
#include "cli/scope.h"
#include "hostmodel/globals.h"
#include "workspace/workspace.h"

#include <memory>

namespace lintara::cli {

class LineNumberEditor {
  public:
    // `globals` show `workspace`.
    LineNumberEditor(workspace::Workspace& workspace, std::shared_ptr<hostmodel::Globals> globals,
                     const Options& options);

    // Edits the procedures of one component, and tells all about it but the number of lines that changed.
    // Throws NumbersTooWide.
    [[nodiscard]] ComponentReport Edit(const ScopedComponent& scope);

  private:
    void EditGroup(const EditTarget& target, const ProcedureGroup& group, ComponentReport& report);
    [[nodiscard]] bool EditExactly(const EditTarget& target, const ProcedureGroup& group);
    void ReportUnreached(const EditTarget& target, const ProcedureGroup& group,
                         ComponentReport& report) const;

    workspace::Workspace& workspace_;
    Lintara lintara_;
    bool inserts_;
    bool exact_;
    NumberOptions numbers_;
    GuardedInsertion insertion_;
    GuardedRemoval removal_;
    ProcedureText text_;
};

}  // namespace lintara::cli
