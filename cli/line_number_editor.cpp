#include "cli/line_number_editor.h"

#include "cli/guards/range_guard.h"
#include "cli/terminal_text.h"

#include <algorithm>

namespace lintara::cli {
namespace {

// Whether there is anything in a procedure that a command of that kind might edit.
bool HasWork(const workspace::Module& module, const workspace::ProcedureInfo& procedure, bool inserts) {
    Text line;
    for (Line at = procedure.body().begin; at < procedure.body().end; ++at) {
        module.ReadLine(at, line);
        if (inserts ? line.find_first_not_of(u' ') != Text::npos : FiveDigitNumber(line).has_value()) {
            return true;
        }
    }
    return false;
}

void AddSkipped(ComponentReport& report, const ProcedureGroup& group, Skip skip) {
    report.skipped.push_back({group.name, KindWord(group), group.reached.front().header, skip.reason, skip.at,
                              std::move(skip.message)});
}

// The library looks projects and components up by their names and finds the first.
bool IsReachable(const workspace::Workspace& workspace, const ScopedComponent& scope) {
    return workspace.Find(scope.project->name()) == scope.project &&
           scope.project->Find(scope.component->name) == scope.component;
}

void ReportUnreachable(const ScopedComponent& scope, ComponentReport& report) {
    for (const ProcedureGroup& group : scope.groups) {
        AddSkipped(report, group,
                   {SkipReason::NameClash, group.reached.front().header,
                    "another component of that name comes first and would be edited in its place"});
    }
}

}  // namespace

LineNumberEditor::LineNumberEditor(workspace::Workspace& workspace,
                                   std::shared_ptr<hostmodel::Globals> globals, const Options& options)
    : workspace_(workspace),
      inserts_(options.verb == Verb::Insert),
      exact_(options.edit.exact),
      numbers_(options.numbers),
      insertion_(options.numbers) {
    lintara_.oG = std::move(globals);
}

ComponentReport LineNumberEditor::Edit(const ScopedComponent& scope) {
    ComponentReport report{.project = scope.project, .component = scope.component};
    if (!IsReachable(workspace_, scope)) {
        ReportUnreachable(scope, report);
        return report;
    }
    workspace_.SetActiveProject(*scope.project);
    const EditTarget target{lintara_, *scope.project, *scope.component, *scope.component->module};
    if (inserts_) {
        std::ranges::for_each(scope.groups, [&](const auto& group) { EditGroup(target, group, report); });
        return report;
    }
    // Backwards, so that each removal meets the module as the insertion left it.
    for (auto group = scope.groups.rbegin(); group != scope.groups.rend(); ++group) {
        EditGroup(target, *group, report);
    }
    std::ranges::reverse(report.edited);
    std::ranges::reverse(report.skipped);
    return report;
}

void LineNumberEditor::EditGroup(const EditTarget& target, const ProcedureGroup& group,
                                 ComponentReport& report) {
    if (exact_) {
        if (EditExactly(target, group)) {
            report.edited.push_back({group.name, KindWord(group), group.reached.front().header});
        }
        return;
    }
    auto edited = inserts_ ? insertion_.Insert(target, group, report) : removal_.Remove(target, group);
    if (!edited) {
        AddSkipped(report, group, std::move(edited.error()));
    } else if (*edited) {
        report.edited.push_back({group.name, KindWord(group), group.reached.front().header});
    }
    if (!group.unreached.empty()) {
        ReportUnreached(target, group, report);
    }
}

bool LineNumberEditor::EditExactly(const EditTarget& target, const ProcedureGroup& group) {
    text_.Read(target.module, RangesToVisit(target.RangesOf(group)));
    const Text& project = target.project.name();
    const Text& component = target.component.name;
    if (!inserts_) {
        lintara_.LineNumbersRemover(project, component, group.name);
        return text_.Differs(target.module);
    }
    if (numbers_.renumber) {
        lintara_.LineNumbersRemover(project, component, group.name);
    }
    lintara_.LineNumbersInserter(project, component, group.name, numbers_.base, numbers_.step);
    return text_.Differs(target.module);
}

void LineNumberEditor::ReportUnreached(const EditTarget& target, const ProcedureGroup& group,
                                       ComponentReport& report) const {
    for (const workspace::ProcedureInfo& procedure : group.unreached) {
        if (HasWork(target.module, procedure, inserts_)) {
            report.skipped.push_back({procedure.name, KindWord(procedure), procedure.header,
                                      SkipReason::DuplicateProcedure, procedure.header,
                                      "only the first procedure of that name, at " +
                                          target.Place(group.reached.front().header) + ", can be reached"});
        }
    }
}

}  // namespace lintara::cli
