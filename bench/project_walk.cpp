#include "bench/project_walk.h"

#include "workspace/characters.h"
#include "workspace/object_model.h"

#include <unordered_set>

namespace lintara::bench {
namespace {

constexpr TextView HandlerCode = u"    MsgBox Err.Description\r\n    Resume Next";
constexpr std::int32_t Base = 10000;
constexpr std::int32_t Step = 1;

}  // namespace

std::unique_ptr<workspace::Workspace> WorkspaceWith(const std::string& bytes, std::size_t codeBegin) {
    auto component = std::make_unique<workspace::Component>();
    component->name = u"Generated";
    component->type = hostmodel::ComponentType::Class;
    component->module =
        std::make_unique<workspace::Module>(bytes, codeBegin, *workspace::FindEncoding("1252"));
    auto project = std::make_unique<workspace::Project>(u"Generated", "");
    project->Add(std::move(component));
    auto opened = std::make_unique<workspace::Workspace>();
    opened->Add(std::move(project));
    return opened;
}

ProjectWalk::ProjectWalk(workspace::Workspace& workspace) {
    library_.oG = std::make_shared<workspace::WorkspaceGlobals>(workspace);
    const workspace::Project& project = *workspace.projects().front();
    project_ = project.name();
    for (const auto& component : project.components()) {
        ComponentNames& all = components_.emplace_back(component->name);
        std::unordered_set<Text> seen;
        for (workspace::ProcedureInfo& procedure : component->module->Procedures()) {
            if (seen.insert(workspace::FoldCase(procedure.name)).second) {
                all.procedures.push_back(std::move(procedure.name));
            }
        }
        names_ += all.procedures.size();
    }
}

template <class Call>
void ProjectWalk::ForEachName(Call call) {
    for (const ComponentNames& component : components_) {
        for (const Text& name : component.procedures) {
            call(component.component, name);
        }
    }
}

void ProjectWalk::InsertHandler(const Text& component, const Text& name, TextView label) {
    library_.ErrorHandlerInserter(project_, component, name, label, HandlerCode);
}

void ProjectWalk::InsertNumbers() {
    ForEachName([&](const Text& component, const Text& name) {
        library_.LineNumbersInserter(project_, component, name, Base, Step);
    });
}

void ProjectWalk::RemoveNumbers() {
    ForEachName([&](const Text& component, const Text& name) {
        library_.LineNumbersRemover(project_, component, name);
    });
}

void ProjectWalk::InsertHandlers(TextView label) {
    ForEachName([&](const Text& component, const Text& name) { InsertHandler(component, name, label); });
}

void ProjectWalk::RemoveHandlers() {
    ForEachName([&](const Text& component, const Text& name) {
        library_.ErrorHandlerRemover(project_, component, name);
    });
}

void ProjectWalk::InsertBoth() {
    ForEachName([&](const Text& component, const Text& name) {
        InsertHandler(component, name, SavedLabel);
        library_.LineNumbersInserter(project_, component, name, Base, Step);
    });
}

void ProjectWalk::RemoveBoth() {
    ForEachName([&](const Text& component, const Text& name) {
        library_.LineNumbersRemover(project_, component, name);
        library_.ErrorHandlerRemover(project_, component, name);
    });
}

}  // namespace lintara::bench
