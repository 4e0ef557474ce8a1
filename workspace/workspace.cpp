#include "workspace/workspace.h"

#include <utility>

namespace lintara::workspace {

Component& Project::Add(std::unique_ptr<Component> component) {
    byName_.emplace(FoldCase(component->name), component.get());
    return *components_.emplace_back(std::move(component));
}

Component* Project::Find(TextView componentName) const {
    const auto entry = byName_.find(FoldCase(componentName));
    return entry == byName_.end() ? nullptr : entry->second;
}

Project& Workspace::Add(std::unique_ptr<Project> project) {
    Project& added = *projects_.emplace_back(std::move(project));
    if (activeProject_ == nullptr) {
        activeProject_ = &added;
    }
    return added;
}

Project* Workspace::Find(TextView projectName) const {
    for (const std::unique_ptr<Project>& project : projects_) {
        if (SameName(project->name(), projectName)) {
            return project.get();
        }
    }
    return nullptr;
}

void Workspace::SetActivePane(const ActivePane& pane) {
    activePane_ = pane;
    activeProject_ = pane.project;
}

void Workspace::Clear() {
    activePane_.reset();
    activeProject_ = nullptr;
    projects_.clear();
}

}  // namespace lintara::workspace
