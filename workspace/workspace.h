// The projects that are open: what stands in for the IDE where it is absent. Plain data with lookups; the
// interfaces of hostmodel/ over it are made by workspace/object_model.h.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "hostmodel/code_pane.h"
#include "hostmodel/member_kind.h"
#include "workspace/characters.h"
#include "workspace/file_identity.h"
#include "workspace/module.h"

#include <cstdint>
#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

namespace lintara::workspace {

// A control on a component's designer.
struct DesignerControl {
    Text name;
    Text className;  // without the library's prefix
};

struct Component {
    Text name;
    hostmodel::ComponentType type = hostmodel::ComponentType::Module;
    std::filesystem::path path;                            // empty for a component in memory
    FileIdentity identity;                                 // of the file when it was read
    std::int64_t projectFileLine = 0;                      // that names the component; 0: none does
    std::optional<std::vector<DesignerControl>> designer;  // outermost object excepted; none: no designer
    std::unique_ptr<workspace::Module> module;
};

class Project {
  public:
    Project(Text name, std::filesystem::path path) : name_(std::move(name)), path_(std::move(path)) {}

    [[nodiscard]] const Text& name() const { return name_; }
    // The project file, the folder or the single component; empty for a project in memory.
    [[nodiscard]] const std::filesystem::path& path() const { return path_; }
    [[nodiscard]] const std::vector<std::unique_ptr<Component>>& components() const { return components_; }

    // Files that belong to the project and are no components: its group's file, resources, documents.
    [[nodiscard]] const std::vector<std::filesystem::path>& otherFiles() const { return otherFiles_; }
    void AddOtherFile(std::filesystem::path file) { otherFiles_.push_back(std::move(file)); }

    // The folder below which its files may be written (workspace/writable_area.h); empty for a project in
    // memory.
    [[nodiscard]] const std::filesystem::path& tree() const { return tree_; }
    void SetTree(std::filesystem::path tree) { tree_ = std::move(tree); }

    // The first component of that name wins the lookup.
    Component& Add(std::unique_ptr<Component> component);
    // Null when there is none.
    [[nodiscard]] Component* Find(TextView componentName) const;

  private:
    Text name_;
    std::filesystem::path path_;
    std::filesystem::path tree_;
    std::vector<std::filesystem::path> otherFiles_;
    std::vector<std::unique_ptr<Component>> components_;
    std::unordered_map<Text, Component*> byName_;  // under the folded name
};

// The code window that has the focus.
struct ActivePane {
    Project* project = nullptr;
    workspace::Component* component = nullptr;
    hostmodel::Selection selection;
    Line topLine{1};
    std::int32_t visibleLines = 25;
};

class Workspace {
  public:
    [[nodiscard]] const std::vector<std::unique_ptr<Project>>& projects() const { return projects_; }

    // The first project added becomes the active one.
    Project& Add(std::unique_ptr<Project> project);
    // Null when there is none.
    [[nodiscard]] Project* Find(TextView projectName) const;

    [[nodiscard]] Project* activeProject() const { return activeProject_; }
    // Of the active one, it may be called from several threads.
    void SetActiveProject(Project& project) {
        if (activeProject_ != &project) {
            activeProject_ = &project;
        }
    }

    [[nodiscard]] const std::optional<ActivePane>& activePane() const { return activePane_; }
    // Makes the pane's project the active one, too.
    void SetActivePane(const ActivePane& pane);
    void ClearActivePane() { activePane_.reset(); }

    // Closes everything; nothing is saved.
    void Clear();

  private:
    std::vector<std::unique_ptr<Project>> projects_;
    Project* activeProject_ = nullptr;
    std::optional<ActivePane> activePane_;
};

}  // namespace lintara::workspace
