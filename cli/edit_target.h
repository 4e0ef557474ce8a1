// The component that is edited, as the library and as the workspace see it.
#pragma once

#include "assistant/lintara.h"
#include "cli/procedure_groups.h"
#include "cli/report.h"
#include "transform/procedure_ranges.h"
#include "workspace/workspace.h"

namespace lintara::cli {

struct EditTarget {
    Lintara& lintara;
    const workspace::Project& project;
    const workspace::Component& component;
    workspace::Module& module;

    [[nodiscard]] transform::ProcedureRanges RangesOf(const ProcedureGroup& group) const {
        return transform::GetProcedureRanges(*lintara.oG, project.name(), component.name, group.name);
    }
    // "line 12 (line 30 of the file)"
    [[nodiscard]] std::string Place(Line line) const {
        return "line " + std::to_string(line.value()) + " (line " + std::to_string(module.FileLine(line)) +
               " of the file)";
    }
};

// Why a group of procedures stays as it was, and where to look.
struct Skip {
    SkipReason reason = SkipReason::RangeMismatch;
    Line at;
    std::string message;
};

}  // namespace lintara::cli
