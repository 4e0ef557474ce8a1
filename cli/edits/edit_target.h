// The component that is edited, as the library and as the workspace see it.
#pragma once

#include "assistant/lintara.h"
#include "cli/output/report.h"
#include "cli/project/input_line.h"
#include "cli/scope/procedure_groups.h"
#include "transform/procedure_ranges.h"
#include "workspace/workspace.h"

#include <optional>
#include <string>

namespace lintara::cli {

struct EditTarget {
    Lintara& lintara;
    const workspace::Project& project;
    const workspace::Component& component;
    workspace::Module& module;

    [[nodiscard]] transform::ProcedureRanges RangesOf(const ProcedureGroup& group) const {
        return transform::GetProcedureRanges(*lintara.oG, project.name(), component.name, group.name);
    }
    // The line as the files had it when the command began: all reports speak of those. Of an inserted line,
    // the one below it.
    [[nodiscard]] Line Input(Line line) const { return InputLine(module, line); }
    // "line 12 (line 30 of the file)"
    [[nodiscard]] std::string Place(Line line) const { return InputPlace(module, line); }
};

// Why a group of procedures stays as it was, and where to look.
struct Skip {
    SkipReason reason = SkipReason::RangeMismatch;
    Line at;  // as the module is now
    std::string message;
};

// The guard that all edits share: the library must edit exactly what the workspace holds for the procedures.
[[nodiscard]] std::optional<Skip> CheckRanges(const EditTarget& target, const ProcedureGroup& group);

}  // namespace lintara::cli
