// Walks the procedures of components and has each name edited once, guarded or exactly.
#pragma once

#include "assistant/lintara.h"
#include "cli/edits/edit_run.h"
#include "cli/edits/procedure_edit.h"
#include "cli/output/report.h"
#include "cli/scope/scope.h"
#include "hostmodel/globals.h"
#include "workspace/workspace.h"

#include <cstddef>
#include <map>
#include <memory>
#include <span>
#include <string_view>
#include <utility>
#include <vector>

namespace lintara::cli {

// What is done to each procedure.
struct EditPlan {
    std::vector<std::unique_ptr<ProcedureEdit>> edits = {};  // in this order
    // From the last procedure of a module to the first: removals, which so meet the module as the insertions
    // left it.
    bool backwards = false;
    bool exact = false;
    // Each edit walks all procedures before the next one begins: for edits that look at the lines of the
    // whole module, which the others move.
    bool inPasses = false;
};

// Groups of procedures that stay as they are, by the number of their first one in the module, and what is
// told of them.
using KeptProcedures = std::map<std::size_t, SkippedProcedure>;

class ProcedureEditor : public ComponentEditor {
  public:
    // `globals` show `workspace`; `platform` is what the library gets.
    ProcedureEditor(workspace::Workspace& workspace, std::shared_ptr<hostmodel::Globals> globals,
                    Platform platform, EditPlan plan);

    [[nodiscard]] ComponentReport Edit(const ScopedComponent& scope) override { return Edit(scope, {}); }
    [[nodiscard]] ComponentReport Edit(const ScopedComponent& scope, const KeptProcedures& kept);

  private:
    using Edits = std::span<const std::unique_ptr<ProcedureEdit>>;

    void Walk(const EditTarget& target, std::vector<ProcedureGroup>& groups, const KeptProcedures& kept,
              ComponentReport& report);
    // Whether anything was edited.
    [[nodiscard]] bool EditGroup(const EditTarget& target, ProcedureGroup& group, Edits edits,
                                 ComponentReport& report);
    [[nodiscard]] bool Apply(ProcedureEdit& edit, const EditTarget& target, const ProcedureGroup& group,
                             ComponentReport& report);
    // Two edits that skip a procedure for the same reason are told as one.
    void AddSkipped(const workspace::Module& module, const ProcedureGroup& group, Skip skip,
                    std::string_view fate, ComponentReport& report);
    void ReportUnreached(const EditTarget& target, const ProcedureGroup& group,
                         ComponentReport& report) const;
    [[nodiscard]] bool HasWork(const workspace::Module& module,
                               const workspace::ProcedureInfo& procedure) const;

    workspace::Workspace& workspace_;
    Lintara lintara_;
    EditPlan plan_;
    // Where the report of the component that is edited has the skips that edits asked for.
    std::map<std::pair<Line, SkipReason>, std::size_t> skippedAt_;
};

}  // namespace lintara::cli
