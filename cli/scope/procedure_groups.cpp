#include "cli/scope/procedure_groups.h"

#include "workspace/characters.h"

#include <algorithm>
#include <unordered_map>

namespace lintara::cli {
namespace {

using hostmodel::MemberKind;
using workspace::ProcedureInfo;

// Moves to `unreached` what is hidden behind others: all but the first of each kind, and the procedures of a
// property behind a Sub or Function of its name.
void SetApart(ProcedureGroup& group) {
    const auto isProc = [](const ProcedureInfo& p) { return p.kind == MemberKind::vbext_pk_Proc; };
    const bool hasProc = std::ranges::any_of(group.reached, isProc);
    std::vector<ProcedureInfo> all = std::move(group.reached);
    group.reached.clear();
    for (ProcedureInfo& procedure : all) {
        const bool hidden =
            (hasProc && !isProc(procedure)) ||
            std::ranges::find(group.reached, procedure.kind, &ProcedureInfo::kind) != group.reached.end();
        (hidden ? group.unreached : group.reached).push_back(std::move(procedure));
    }
}

}  // namespace

std::vector<ProcedureGroup> GroupProcedures(std::vector<ProcedureInfo> procedures) {
    std::vector<ProcedureGroup> groups;
    std::unordered_map<Text, std::size_t> byName;
    for (ProcedureInfo& procedure : procedures) {
        const auto [place, isNew] = byName.try_emplace(workspace::FoldCase(procedure.name), groups.size());
        if (isNew) {
            groups.push_back({.name = procedure.name, .reached = {}, .unreached = {}});
        }
        groups[place->second].reached.push_back(std::move(procedure));
    }
    for (ProcedureGroup& group : groups) {
        if (group.reached.size() > 1) {
            SetApart(group);
        }
    }
    return groups;
}

void Refresh(ProcedureGroup& group, const workspace::Module& module) {
    for (auto* procedures : {&group.reached, &group.unreached}) {
        for (ProcedureInfo& procedure : *procedures) {
            if (procedure.number < module.CountOfProcedures()) {
                procedure = module.Procedure(procedure.number);
            }
        }
    }
}

std::string_view KindWord(const ProcedureInfo& procedure) {
    switch (procedure.kind) {
        case MemberKind::vbext_pk_Proc:
            return procedure.isFunction ? "Function" : "Sub";
        case MemberKind::vbext_pk_Get:
            return "Property Get";
        case MemberKind::vbext_pk_Let:
            return "Property Let";
        case MemberKind::vbext_pk_Set:
            return "Property Set";
    }
    return "";
}

std::string_view KindWord(const ProcedureGroup& group) {
    const ProcedureInfo& first = group.reached.front();
    return first.kind == MemberKind::vbext_pk_Proc ? KindWord(first) : "Property";
}

}  // namespace lintara::cli
