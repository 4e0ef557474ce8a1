#include "workspace/object_model.h"

#include <algorithm>
#include <span>
#include <utility>
#include <vector>

namespace lintara::workspace {

using hostmodel::ComponentType;
using hostmodel::Dispatch;
using hostmodel::MemberKind;
using hostmodel::MemberType;
using hostmodel::Value;

namespace {

std::unexpected<HostError> NotFound(std::string_view reason) {
    return Failure(ErrorNumber::SubscriptOutOfRange, reason);
}

std::unexpected<HostError> NotSupported() {
    return Failure(ErrorNumber::MemberNotSupported, "the object has no such property or method");
}

std::unexpected<HostError> NoHistory() {
    return Failure(ErrorNumber::ObjectNotSet, "there is no history without its window");
}

Result<Text> NoIdentity() {
    return Failure(ErrorNumber::ObjectNotSet, "nobody tells the names of the computer and the user");
}

// Counts itself among the handles that are alive.
class Counted {
  public:
    explicit Counted(std::shared_ptr<std::size_t> count) : count_(std::move(count)) { ++*count_; }
    Counted(const Counted& other) : Counted(other.count_) {}
    Counted(Counted&& other) noexcept : Counted(other.count_) {}
    Counted& operator=(const Counted&) = delete;
    ~Counted() { --*count_; }

    [[nodiscard]] const std::shared_ptr<std::size_t>& count() const { return count_; }

  private:
    std::shared_ptr<std::size_t> count_;
};

class MemberHandle : public hostmodel::Member {
  public:
    MemberHandle(Counted counted, MemberInfo info) : counted_(std::move(counted)), info_(std::move(info)) {}

    Result<Line> CodeLocation() override { return info_.codeLocation; }
    Result<MemberType> Type() override { return info_.type; }

  private:
    Counted counted_;
    MemberInfo info_;
};

class MembersHandle : public hostmodel::Members {
  public:
    MembersHandle(Counted counted, const Module& module) : counted_(std::move(counted)), module_(&module) {}

    Result<std::shared_ptr<hostmodel::Member>> Item(TextView name) override {
        return Handle(module_->FindMember(name));
    }

    Result<std::shared_ptr<hostmodel::Member>> Item(std::int32_t index) override {
        std::vector<MemberInfo> members = module_->MemberList();
        const bool exists = index >= 1 && static_cast<std::size_t>(index) <= members.size();
        return Handle(exists ? std::optional(std::move(members[static_cast<std::size_t>(index) - 1]))
                             : std::nullopt);
    }

  private:
    [[nodiscard]] Result<std::shared_ptr<hostmodel::Member>> Handle(std::optional<MemberInfo> member) const {
        if (!member) {
            return NotFound("the module has no such member");
        }
        return std::make_shared<MemberHandle>(counted_, *std::move(member));
    }

    Counted counted_;
    const Module* module_;
};

// The controls of a designer, reached by name as the IDE's own collection is.
class ControlHandle : public Dispatch {
  public:
    ControlHandle(Counted counted, const DesignerControl& control)
        : counted_(std::move(counted)), control_(&control) {}

    Result<Value> Invoke(TextView name, std::span<const Value> arguments) override {
        if (!arguments.empty()) {
            return NotSupported();
        }
        if (SameName(name, u"ClassName")) {
            return control_->className;
        }
        return SameName(name, u"Name") ? Result<Value>(control_->name) : NotSupported();
    }
    Result<void> Put(TextView, const Value&) override { return NotSupported(); }

  private:
    Counted counted_;
    const DesignerControl* control_;
};

class ControlsHandle : public Dispatch {
  public:
    ControlsHandle(Counted counted, const std::vector<DesignerControl>& controls)
        : counted_(std::move(counted)), controls_(&controls) {}

    // "Count", and "Item" with a name or a number from 1, which is also the nameless default member.
    Result<Value> Invoke(TextView name, std::span<const Value> arguments) override {
        if (SameName(name, u"Count") && arguments.empty()) {
            return static_cast<std::int32_t>(controls_->size());
        }
        if ((!name.empty() && !SameName(name, u"Item")) || arguments.size() != 1) {
            return NotSupported();
        }
        const auto control = Find(arguments.front());
        if (control == controls_->end()) {
            return NotFound("the designer has no such control");
        }
        return std::static_pointer_cast<Dispatch>(std::make_shared<ControlHandle>(counted_, *control));
    }
    Result<void> Put(TextView, const Value&) override { return NotSupported(); }

  private:
    [[nodiscard]] std::vector<DesignerControl>::const_iterator Find(const Value& key) const {
        if (const auto* name = std::get_if<Text>(&key)) {
            return std::ranges::find_if(*controls_, [&](const auto& c) { return SameName(c.name, *name); });
        }
        const auto* number = std::get_if<std::int32_t>(&key);
        const bool exists =
            number != nullptr && *number >= 1 && std::cmp_less_equal(*number, controls_->size());
        return exists ? controls_->begin() + (*number - 1) : controls_->end();
    }

    Counted counted_;
    const std::vector<DesignerControl>* controls_;
};

class DesignerHandle : public Dispatch {
  public:
    DesignerHandle(Counted counted, const std::vector<DesignerControl>& controls)
        : counted_(std::move(counted)), controls_(&controls) {}

    Result<Value> Invoke(TextView name, std::span<const Value> arguments) override {
        if (!SameName(name, u"VBControls") || !arguments.empty()) {
            return NotSupported();
        }
        return std::static_pointer_cast<Dispatch>(std::make_shared<ControlsHandle>(counted_, *controls_));
    }
    Result<void> Put(TextView, const Value&) override { return NotSupported(); }

  private:
    Counted counted_;
    const std::vector<DesignerControl>* controls_;
};

class ComponentHandle;

class CodeModuleHandle : public hostmodel::CodeModule {
  public:
    CodeModuleHandle(Counted counted, Component& component)
        : counted_(std::move(counted)), component_(&component), module_(component.module.get()) {}

    Result<std::shared_ptr<hostmodel::VBComponent>> Parent() override;

    Result<Text> Lines(Line startLine, std::int32_t count) override {
        return module_->Lines(startLine, count);
    }
    Result<void> InsertLines(Line line, TextView text) override { return module_->InsertLines(line, text); }
    Result<void> DeleteLines(Line startLine, std::int32_t count) override {
        return module_->DeleteLines(startLine, count);
    }
    Result<void> ReplaceLine(Line line, TextView text) override { return module_->ReplaceLine(line, text); }
    Result<Line> ProcStartLine(TextView name, MemberKind kind) override {
        return module_->ProcStartLine(name, kind);
    }
    Result<Line> ProcBodyLine(TextView name, MemberKind kind) override {
        return module_->ProcBodyLine(name, kind);
    }
    Result<std::int32_t> ProcCountLines(TextView name, MemberKind kind) override {
        return module_->ProcCountLines(name, kind);
    }
    Result<Text> ProcOfLine(Line line, MemberKind& kind) override { return module_->ProcOfLine(line, kind); }
    Result<std::int32_t> CountOfDeclarationLines() override { return module_->CountOfDeclarationLines(); }
    Result<std::shared_ptr<hostmodel::Members>> Members() override {
        return std::make_shared<MembersHandle>(counted_, *module_);
    }
    Result<bool> Find(TextView target, Position& start, Position& end,
                      hostmodel::FindOptions options) override {
        return module_->Find(target, start, end, options);
    }

  private:
    Counted counted_;
    Component* component_;
    Module* module_;
};

class ComponentHandle : public hostmodel::VBComponent {
  public:
    ComponentHandle(Counted counted, Component& component)
        : counted_(std::move(counted)), component_(&component) {}

    Result<Text> Name() override { return component_->name; }
    Result<ComponentType> Type() override { return component_->type; }
    Result<std::shared_ptr<hostmodel::CodeModule>> CodeModule() override {
        return std::make_shared<CodeModuleHandle>(counted_, *component_);
    }
    Result<std::shared_ptr<Dispatch>> Designer() override {
        if (!component_->designer) {
            return Failure(ErrorNumber::ObjectNotSet, "the component has no designer");
        }
        return std::make_shared<DesignerHandle>(counted_, *component_->designer);
    }

  private:
    Counted counted_;
    Component* component_;
};

Result<std::shared_ptr<hostmodel::VBComponent>> CodeModuleHandle::Parent() {
    return std::make_shared<ComponentHandle>(counted_, *component_);
}

class ComponentsHandle : public hostmodel::VBComponents {
  public:
    ComponentsHandle(Counted counted, Project& project) : counted_(std::move(counted)), project_(&project) {}

    Result<std::shared_ptr<hostmodel::VBComponent>> Item(TextView name) override {
        Component* component = project_->Find(name);
        if (component == nullptr) {
            return NotFound("the project has no component of that name");
        }
        return std::make_shared<ComponentHandle>(counted_, *component);
    }

  private:
    Counted counted_;
    Project* project_;
};

class ProjectHandle : public hostmodel::VBProject {
  public:
    ProjectHandle(Counted counted, Project& project) : counted_(std::move(counted)), project_(&project) {}

    Result<Text> Name() override { return project_->name(); }
    Result<std::shared_ptr<hostmodel::VBComponents>> VBComponents() override {
        return std::make_shared<ComponentsHandle>(counted_, *project_);
    }

  private:
    Counted counted_;
    Project* project_;
};

class ProjectsHandle : public hostmodel::VBProjects {
  public:
    ProjectsHandle(Counted counted, Workspace& workspace)
        : counted_(std::move(counted)), workspace_(&workspace) {}

    Result<std::shared_ptr<hostmodel::VBProject>> Item(TextView name) override {
        Project* project = workspace_->Find(name);
        if (project == nullptr) {
            return NotFound("no project of that name is open");
        }
        return std::make_shared<ProjectHandle>(counted_, *project);
    }

  private:
    Counted counted_;
    Workspace* workspace_;
};

class CodePaneHandle : public hostmodel::CodePane {
  public:
    CodePaneHandle(Counted counted, const ActivePane& pane) : counted_(std::move(counted)), pane_(pane) {}

    Result<std::shared_ptr<hostmodel::CodeModule>> CodeModule() override {
        return std::make_shared<CodeModuleHandle>(counted_, *pane_.component);
    }
    Result<hostmodel::Selection> GetSelection() override {
        return hostmodel::Selection{InModule(pane_.selection.start), InModule(pane_.selection.end)};
    }
    Result<Line> TopLine() override { return pane_.topLine; }
    Result<std::int32_t> CountOfVisibleLines() override { return pane_.visibleLines; }

  private:
    // The selection is not moved by edits; beyond the module it is read as the module's end.
    [[nodiscard]] Position InModule(Position position) const {
        const Module& module = *pane_.component->module;
        const Line last{std::max(module.CountOfLines(), 1)};
        Text text;
        if (module.CountOfLines() > 0) {
            module.ReadLine(last, text);
        }
        const Position end{last, Column{static_cast<std::int32_t>(text.size()) + 1}};
        return std::min(position, end);
    }

    Counted counted_;
    ActivePane pane_;
};

class VBEHandle : public hostmodel::VBE {
  public:
    VBEHandle(Counted counted, Workspace& workspace) : counted_(std::move(counted)), workspace_(&workspace) {}

    Result<std::shared_ptr<hostmodel::VBProjects>> VBProjects() override {
        return std::make_shared<ProjectsHandle>(counted_, *workspace_);
    }
    Result<std::shared_ptr<hostmodel::VBProject>> ActiveVBProject() override {
        if (workspace_->activeProject() == nullptr) {
            return Failure(ErrorNumber::ObjectNotSet, "no project is active");
        }
        return std::make_shared<ProjectHandle>(counted_, *workspace_->activeProject());
    }
    Result<std::shared_ptr<hostmodel::CodePane>> ActiveCodePane() override {
        if (!workspace_->activePane()) {
            return Failure(ErrorNumber::ObjectNotSet, "no code window is active");
        }
        return std::make_shared<CodePaneHandle>(counted_, *workspace_->activePane());
    }

  private:
    Counted counted_;
    Workspace* workspace_;
};

}  // namespace

WorkspaceGlobals::WorkspaceGlobals(Workspace& workspace, std::shared_ptr<Identity> identity)
    : workspace_(&workspace), identity_(std::move(identity)) {}

std::size_t WorkspaceGlobals::liveHandles() const {
    return *liveHandles_;
}

Result<std::shared_ptr<hostmodel::VBE>> WorkspaceGlobals::VBE() {
    return std::make_shared<VBEHandle>(Counted(liveHandles_), *workspace_);
}

Result<Text> WorkspaceGlobals::ComputerName() {
    if (!computerName_) {
        return identity_ == nullptr ? NoIdentity() : identity_->ComputerName();
    }
    return *computerName_;
}

Result<Text> WorkspaceGlobals::UserName() {
    if (!userName_) {
        return identity_ == nullptr ? NoIdentity() : identity_->UserName();
    }
    return *userName_;
}

Result<Text> WorkspaceGlobals::TokenBefore(TextView text, TextView separator) {
    const std::size_t at = separator.empty() ? TextView::npos : text.rfind(separator);
    return Text(at == TextView::npos ? TextView{} : text.substr(0, at));
}

Result<Text> WorkspaceGlobals::CodeDbPath() {
    return codeDbPath_;
}

Result<void> WorkspaceGlobals::SetCodeDbPath(TextView folder) {
    codeDbPath_ = folder;
    return {};
}

Result<std::shared_ptr<hostmodel::Database>> WorkspaceGlobals::CodeDb() {
    return codeDb_;
}

Result<void> WorkspaceGlobals::SetCodeDb(std::shared_ptr<hostmodel::Database> database) {
    codeDb_ = std::move(database);
    return {};
}

Result<std::shared_ptr<Dispatch>> WorkspaceGlobals::HostForm() {
    return NoHistory();
}
Result<std::shared_ptr<Dispatch>> WorkspaceGlobals::ProjectsData() {
    return NoHistory();
}
Result<std::shared_ptr<Dispatch>> WorkspaceGlobals::AddInHost() {
    return NoHistory();
}
Result<Text> WorkspaceGlobals::HistSeparator() {
    return NoHistory();
}
Result<Text> WorkspaceGlobals::HistCurrentKey() {
    return NoHistory();
}
Result<Text> WorkspaceGlobals::HistSelKey() {
    return NoHistory();
}
Result<void> WorkspaceGlobals::SetHistSelKey(TextView) {
    return NoHistory();
}
Result<Text> WorkspaceGlobals::HistSelObject() {
    return NoHistory();
}
Result<void> WorkspaceGlobals::SetHistSelObject(TextView) {
    return NoHistory();
}
Result<void> WorkspaceGlobals::LoadWindowState(hostmodel::PlacedWindow&) {
    return {};
}
Result<void> WorkspaceGlobals::SaveWindowState(const hostmodel::PlacedWindow&) {
    return {};
}

}  // namespace lintara::workspace
