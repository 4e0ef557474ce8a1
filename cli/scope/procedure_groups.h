// The procedures of a module by name: what one call of the library edits, and what it cannot reach.
#pragma once

#include "base/text.h"
#include "workspace/module.h"

#include <string_view>
#include <vector>

namespace lintara::cli {

struct ProcedureGroup {
    Text name;  // as the header of the first procedure writes it
    // What the library reaches by the name: the first Sub or Function, or the first Get, Let and Set.
    std::vector<workspace::ProcedureInfo> reached;
    // Further procedures of the name, as under #If and #Else.
    std::vector<workspace::ProcedureInfo> unreached;
};

// In order of first appearance. Names that differ only in case are one.
[[nodiscard]] std::vector<ProcedureGroup> GroupProcedures(std::vector<workspace::ProcedureInfo> procedures);

// Takes over where the procedures of the group stand now, after edits that moved them. One that is gone, as
// an exact edit may leave it, stays where it was.
void Refresh(ProcedureGroup& group, const workspace::Module& module);

// "Sub", "Function", "Property Get" ...
[[nodiscard]] std::string_view KindWord(const workspace::ProcedureInfo& procedure);

// The kind of all procedures that the library reaches: "Sub", "Function" or "Property".
[[nodiscard]] std::string_view KindWord(const ProcedureGroup& group);

}  // namespace lintara::cli
