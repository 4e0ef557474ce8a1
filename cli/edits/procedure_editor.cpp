#include "cli/edits/procedure_editor.h"

#include "cli/edits/reachable.h"
#include "cli/edits/size_limit.h"
#include "workspace/limits.h"

#include <algorithm>

namespace lintara::cli {
namespace {

// What became of a procedure that no edit may touch.
constexpr std::string_view WasSkipped = "was skipped";

// A template may hold such a name thousands of times.
Skip LongName(const EditTarget& target, const ProcedureGroup& group) {
    const Line header = group.reached.front().header;
    return {SkipReason::LongName, header,
            "its name at " + target.Place(header) + " has more than " +
                std::to_string(workspace::longestName) + " characters"};
}

}  // namespace

ProcedureEditor::ProcedureEditor(workspace::Workspace& workspace, std::shared_ptr<hostmodel::Globals> globals,
                                 Platform platform, EditPlan plan)
    : workspace_(workspace), lintara_(std::move(platform)), plan_(std::move(plan)) {
    lintara_.oG = std::move(globals);
}

ComponentReport ProcedureEditor::Edit(const ScopedComponent& scope, const KeptProcedures& kept) {
    ComponentReport report{.project = scope.project, .component = scope.component};
    skippedAt_.clear();
    if (!IsReachable(workspace_, scope)) {
        for (const ProcedureGroup& group : scope.groups) {
            AddSkipped(*scope.component->module, group,
                       {SkipReason::NameClash, group.reached.front().header,
                        "another component of that name comes first and would be edited in its place"},
                       WasSkipped, report);
        }
        return report;
    }
    workspace_.SetActiveProject(*scope.project);
    const EditTarget target{lintara_, *scope.project, *scope.component, *scope.component->module};
    std::vector<ProcedureGroup> groups = scope.groups;
    if (plan_.backwards) {
        std::ranges::reverse(groups);
    }
    Walk(target, groups, kept, report);
    if (plan_.backwards) {
        std::ranges::reverse(report.edited);
        std::ranges::reverse(report.skipped);
    }
    std::ranges::stable_sort(report.remarks, {}, &Remark::at);
    return report;
}

void ProcedureEditor::Walk(const EditTarget& target, std::vector<ProcedureGroup>& groups,
                           const KeptProcedures& kept, ComponentReport& report) {
    const Edits edits(plan_.edits);
    const std::size_t atOnce = plan_.inPasses ? 1 : std::max<std::size_t>(edits.size(), 1);
    std::vector<bool> edited(groups.size());
    for (std::size_t first = 0; first < edits.size(); first += atOnce) {
        const bool isLast = first + atOnce >= edits.size();
        for (std::size_t i = 0; i < groups.size(); ++i) {
            ProcedureGroup& group = groups[i];
            if (group.name.size() > workspace::longestName) {
                AddSkipped(target.module, group, LongName(target, group), WasSkipped, report);
            } else if (const auto keep = kept.find(group.reached.front().number); keep == kept.end()) {
                RequireReadable(target.component);
                edited[i] = EditGroup(target, group, edits.subspan(first, atOnce), report) || edited[i];
            } else if (isLast) {
                report.skipped.push_back(keep->second);
            }
            if (isLast && edited[i]) {
                report.edited.push_back(
                    {group.name, KindWord(group), target.Input(group.reached.front().header)});
            }
            if (isLast && !group.unreached.empty() && !plan_.exact) {
                ReportUnreached(target, group, report);
            }
        }
    }
}

bool ProcedureEditor::EditGroup(const EditTarget& target, ProcedureGroup& group, Edits edits,
                                ComponentReport& report) {
    bool edited = false;
    for (const auto& edit : edits) {
        Refresh(group, target.module);
        edited |= Apply(*edit, target, group, report);
    }
    Refresh(group, target.module);
    return edited;
}

bool ProcedureEditor::Apply(ProcedureEdit& edit, const EditTarget& target, const ProcedureGroup& group,
                            ComponentReport& report) {
    if (plan_.exact) {
        return edit.ApplyExactly(target, group);
    }
    auto edited = edit.Apply(target, group, report);
    if (!edited) {
        const std::string_view fate = plan_.edits.size() > 1 ? edit.fate() : WasSkipped;
        AddSkipped(target.module, group, std::move(edited.error()), fate, report);
        return false;
    }
    return *edited;
}

void ProcedureEditor::AddSkipped(const workspace::Module& module, const ProcedureGroup& group, Skip skip,
                                 std::string_view fate, ComponentReport& report) {
    const Line header = InputLine(module, group.reached.front().header);
    const auto [place, isNew] = skippedAt_.try_emplace({header, skip.reason}, report.skipped.size());
    if (isNew) {
        report.skipped.push_back({group.name, KindWord(group), header, skip.reason,
                                  InputLine(module, skip.at), std::move(skip.message), fate});
    } else {
        report.skipped[place->second].fate = WasSkipped;
    }
}

void ProcedureEditor::ReportUnreached(const EditTarget& target, const ProcedureGroup& group,
                                      ComponentReport& report) const {
    for (const workspace::ProcedureInfo& procedure : group.unreached) {
        if (HasWork(target.module, procedure)) {
            const Line header = target.Input(procedure.header);
            report.skipped.push_back({procedure.name, KindWord(procedure), header,
                                      SkipReason::DuplicateProcedure, header,
                                      "only the first procedure of that name, at " +
                                          target.Place(group.reached.front().header) + ", can be reached"});
        }
    }
}

bool ProcedureEditor::HasWork(const workspace::Module& module,
                              const workspace::ProcedureInfo& procedure) const {
    return std::ranges::any_of(plan_.edits,
                               [&](const auto& edit) { return edit->HasWork(module, procedure); });
}

}  // namespace lintara::cli
