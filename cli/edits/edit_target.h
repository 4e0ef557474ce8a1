// The component that is edited, as the library and as the workspace see it.
#pragma once

#include "assistant/lintara.h"
#include "cli/output/report.h"
#include "cli/project/input_line.h"
#include "cli/project/procedure_text.h"
#include "cli/scope/procedure_groups.h"
#include "transform/procedure_ranges.h"
#include "workspace/workspace.h"

#include <optional>
#include <span>
#include <string>
#include <string_view>

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

// The guard that all edits share: the library must edit exactly what the workspace holds for the procedures,
// and what it edits must be one procedure, whatever is compiled. `text` is the group's as it stands now.
[[nodiscard]] std::optional<Skip> CheckRanges(const EditTarget& target, const ProcedureGroup& group,
                                              const ProcedureText& text);
// The same for a group whose text nobody has read.
[[nodiscard]] std::optional<Skip> CheckRanges(const EditTarget& target, const ProcedureGroup& group);

// The guard of edits that search a body to its end: it must have lines, and its last one must not continue
// into the closing line. `harm` says what would happen in a body without lines.
[[nodiscard]] std::optional<Skip> CheckBodyEnd(const EditTarget& target, const ProcedureText& text,
                                               const ProcedureText::Part& part, std::string_view harm);

// The guard of edits that take lines out: no directive may go whose counterpart stays. `lines` begin at
// `first`; `what` is what they are: "the handler".
[[nodiscard]] std::optional<Skip> CheckDirectivesThatGo(const EditTarget& target, std::span<const Text> lines,
                                                        Line first, std::string_view what);

// The guard of edits that lead "On Error GoTo" with the target `from` to another one: no line may hold so
// many of them that it takes too long.
[[nodiscard]] std::optional<Skip> CheckCrowdedLines(const EditTarget& target, const ProcedureText& text,
                                                    TextView from);
// The same for edits that skip nothing: throws Refusal.
void RequireNoCrowdedLine(const EditTarget& target, const ProcedureGroup& group, const ProcedureText& text,
                          TextView from);

}  // namespace lintara::cli
