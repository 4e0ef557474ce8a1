#include "workspace/open.h"

#include "workspace/component_file.h"
#include "workspace/copy_mark.h"
#include "workspace/limits.h"
#include "workspace/parallel.h"
#include "workspace/project_folders.h"
#include "workspace/project_plan.h"
#include "workspace/read_file.h"
#include "workspace/recovery.h"
#include "workspace/save.h"
#include "workspace/writable_area.h"

#include <algorithm>
#include <chrono>
#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <sys/stat.h>
#include <thread>
#include <unordered_map>
#include <utility>
#include <vector>

namespace lintara::workspace {

namespace fs = std::filesystem;

namespace {

// A component on its way from the disk into a project.
struct Loaded {
    const PlannedComponent* plan = nullptr;
    std::unique_ptr<Component> component;
    Diagnostics warnings;
    std::optional<Diagnostic> error;
};

// Reads the component in `bytes`, the content of the planned file.
void Parse(const EncodingPtr& codePage, std::string bytes, Loaded& loaded) {
    const fs::path& path = loaded.plan->path;
    const auto type = ComponentTypeOf(path).value_or(loaded.plan->entry.type);
    auto file = ParseComponentFile(path, type, bytes, codePage);
    if (!file) {
        loaded.error = std::move(file.error());
        return;
    }
    loaded.warnings = std::move(file->warnings);
    auto component = std::make_unique<Component>();
    component->name = std::move(file->name);
    if (component->name.empty()) {
        component->name = loaded.plan->entry.name;
    }
    if (component->name.empty()) {
        component->name = FromUtf8(path.stem().string());
    }
    component->type = file->type;
    component->path = path;
    component->projectFileLine = loaded.plan->entry.line;
    component->designer = std::move(file->designer);
    component->module =
        std::make_unique<Module>(std::move(bytes), file->codeBegin, std::move(file->encoding));
    loaded.component = std::move(component);
}

// What is wrong with a name, if anything.
std::optional<std::string> ProblemOf(TextView name) {
    if (name.size() <= longestName) {
        return std::nullopt;
    }
    return "has a name of " + std::to_string(name.size()) + " characters; names have at most " +
           std::to_string(longestName);
}

// Gives those that go beyond what may be opened together an error.
void RefuseTooMuch(std::vector<Loaded>& loaded) {
    std::uintmax_t total = 0;
    for (Loaded& each : loaded) {
        const fs::path& path = each.plan->path;
        std::error_code error;
        const std::uintmax_t size = fs::file_size(path, error);
        total += error ? 0 : std::min<std::uintmax_t>(size, largestOpening);
        if (std::cmp_greater(total, largestOpening)) {
            each.error = Diagnostic{path, 0,
                                    "is too much: what is opened together may have " +
                                        std::to_string(largestOpening >> 20) + " MiB"};
        }
    }
}

void Load(const EncodingPtr& codePage, Loaded& loaded) {
    if (loaded.error) {
        return;
    }
    const fs::path& path = loaded.plan->path;
    auto content = ReadFile(path, largestComponent);
    if (!content) {
        loaded.error = Diagnostic{path, 0, std::move(content.error())};
        return;
    }
    if (HasTooManyLines(content->bytes)) {
        loaded.error =
            Diagnostic{path, 0, "has more than " + std::to_string(mostLines) + " lines, too many for code"};
        return;
    }
    Parse(codePage, std::move(content->bytes), loaded);
    if (loaded.component) {
        loaded.component->identity = content->identity;
    }
}

bool ChangedSince(const Component& component) {
    struct stat status {};
    return ::stat(component.path.c_str(), &status) != 0 || IdentityOf(status) != component.identity;
}

// The components of one project, all of which could be read. Two that are the same file, or that go by the
// same name, would make edits go astray.
void CheckProject(const PlannedProject& project, const std::vector<Loaded*>& components,
                  Diagnostics& errors) {
    std::unordered_map<Text, const Loaded*> byName;
    std::map<std::pair<std::uint64_t, std::uint64_t>, const Loaded*> byFile;
    for (const Loaded* const each : components) {
        const Component& component = *each->component;
        const auto [sameFile, isNewFile] =
            byFile.try_emplace({component.identity.device, component.identity.inode}, each);
        if (!isNewFile) {
            const std::int64_t line = sameFile->second->plan->entry.line;
            errors.push_back({line > 0 ? project.path : component.path, each->plan->entry.line,
                              (line > 0 ? component.path.string() + " " : std::string()) +
                                  "is the same file as " + sameFile->second->component->path.string() +
                                  (line > 0 ? " in line " + std::to_string(line) : "")});
            continue;
        }
        if (auto problem = ProblemOf(component.name)) {
            errors.push_back({component.path, 0, *std::move(problem)});
            continue;
        }
        const auto [sameName, isNewName] = byName.try_emplace(FoldCase(component.name), each);
        if (!isNewName) {
            errors.push_back({component.path, 0,
                              "is named " + ToUtf8(component.name) + " as is " +
                                  sameName->second->component->path.string() +
                                  "; components of one project need different names"});
        }
    }
}

class Opener {
  public:
    Opener(Workspace& workspace, const OpenOptions& options)
        : workspace_(workspace),
          options_(options),
          codePage_(options.codePage ? options.codePage : DefaultEncoding()) {}

    // What was read; nothing when files changed meanwhile.
    enum class Outcome : unsigned char { Opened, Failed, Changed };
    Outcome TryOpen(const fs::path& path);

    Diagnostics& errors() { return errors_; }
    Diagnostics& warnings() { return warnings_; }
    [[nodiscard]] const Diagnostics& unreadable() const { return unreadable_; }

  private:
    void LoadAll();
    void CheckAll();
    void AddAll(const fs::path& tree);
    [[nodiscard]] bool AnyChanged() const;

    Workspace& workspace_;
    const OpenOptions& options_;
    EncodingPtr codePage_;
    ProjectPlan plan_;
    std::vector<Loaded> loaded_;  // in the order of the plan
    Diagnostics errors_;
    Diagnostics warnings_;
    Diagnostics unreadable_;  // of components that are left out
};

void Opener::LoadAll() {
    loaded_.clear();
    for (const PlannedProject& project : plan_.projects) {
        for (const PlannedComponent& component : project.components) {
            loaded_.push_back({&component, nullptr, {}, std::nullopt});
        }
    }
    RefuseTooMuch(loaded_);
    InParallel(
        loaded_.size(), [&](std::size_t i) { Load(codePage_, loaded_[i]); },
        [&](std::size_t done) {
            if (options_.progress) {
                options_.progress(done, loaded_.size());
            }
        });
    for (Loaded& each : loaded_) {
        std::ranges::move(each.warnings, std::back_inserter(warnings_));
        if (each.error && options_.unreadable) {
            unreadable_.push_back(*each.error);
        } else if (each.error) {
            errors_.push_back(*each.error);
        }
    }
}

bool Opener::AnyChanged() const {
    return std::ranges::any_of(
        loaded_, [](const Loaded& each) { return each.component && ChangedSince(*each.component); });
}

void Opener::CheckAll() {
    std::size_t next = 0;
    std::vector<const PlannedProject*> seen;
    for (const PlannedProject& project : plan_.projects) {
        std::vector<Loaded*> components;
        for (std::size_t i = 0; i < project.components.size(); ++i, ++next) {
            if (loaded_[next].component) {
                components.push_back(&loaded_[next]);
            }
        }
        CheckProject(project, components, errors_);
        if (auto problem = ProblemOf(project.name)) {
            errors_.push_back({project.path, 0, *std::move(problem)});
            continue;
        }
        const auto sameName = std::ranges::find_if(
            seen, [&](const PlannedProject* other) { return SameName(other->name, project.name); });
        if (sameName != seen.end()) {
            errors_.push_back({project.path, 0,
                               "is named " + ToUtf8(project.name) + " as is " + (*sameName)->path.string() +
                                   "; projects that are open together need different names"});
        } else if (workspace_.Find(project.name) != nullptr) {
            errors_.push_back(
                {project.path, 0, "a project named " + ToUtf8(project.name) + " is open already"});
        }
        seen.push_back(&project);
    }
}

void Opener::AddAll(const fs::path& tree) {
    const bool isFirst = workspace_.activeProject() == nullptr;
    auto next = loaded_.begin();
    for (std::size_t i = 0; i < plan_.projects.size(); ++i) {
        const PlannedProject& planned = plan_.projects[i];
        auto project = std::make_unique<Project>(planned.name, planned.path);
        project->SetTree(tree);
        for (std::size_t count = planned.components.size(); count > 0; --count, ++next) {
            if (next->component) {
                project->Add(std::move(next->component));
            } else {
                project->AddOtherFile(next->plan->path);
            }
        }
        for (const fs::path& file : planned.otherFiles) {
            project->AddOtherFile(file);
        }
        Project& added = workspace_.Add(std::move(project));
        if (i == plan_.startup && (isFirst || plan_.isGroup)) {
            workspace_.SetActiveProject(added);
        }
    }
}

Opener::Outcome Opener::TryOpen(const fs::path& path) {
    errors_.clear();
    unreadable_.clear();
    auto plan = PlanProjects(path, options_);
    if (!plan) {
        errors_ = std::move(plan.error());
        return Outcome::Failed;
    }
    plan_ = *std::move(plan);
    warnings_ = std::move(plan_.warnings);
    unreadable_ = std::move(plan_.unreadable);
    LoadAll();
    std::vector<fs::path> folders;
    for (const PlannedProject& project : plan_.projects) {
        folders.push_back(fs::is_directory(project.path) ? project.path : project.path.parent_path());
    }
    if (AnyChanged() || HasJournal(folders)) {
        return Outcome::Changed;
    }
    CheckAll();
    if (!errors_.empty()) {
        return Outcome::Failed;
    }
    AddAll(TreeOf(path));
    return Outcome::Opened;
}

}  // namespace

std::expected<Diagnostics, Diagnostics> Open(Workspace& workspace, const fs::path& path,
                                             const OpenOptions& options) {
    constexpr int attempts = 5;
    constexpr auto pause = std::chrono::milliseconds(100);
    Opener opener(workspace, options);
    Diagnostics recovered;
    for (int attempt = 0; attempt < attempts; ++attempt) {
        if (attempt > 0) {
            std::this_thread::sleep_for(pause);
        }
        const auto folders = ProjectFolders(path);
        if (!folders) {
            return std::unexpected(Diagnostics{folders.error()});
        }
        if (HasJournal(*folders)) {
            const auto done = Recover(path);
            if (!done) {
                return std::unexpected(done.error());
            }
            for (const std::string& line : *done) {
                recovered.push_back({path, 0, line});
            }
        }
        if (auto incomplete = FindIncompleteCopy(*folders)) {
            return std::unexpected(Diagnostics{*std::move(incomplete)});
        }
        switch (opener.TryOpen(path)) {
            case Opener::Outcome::Opened:
                std::ranges::for_each(opener.unreadable(),
                                      [&](const Diagnostic& problem) { options.unreadable(problem); });
                std::ranges::move(opener.warnings(), std::back_inserter(recovered));
                return recovered;
            case Opener::Outcome::Failed:
                return std::unexpected(std::move(opener.errors()));
            case Opener::Outcome::Changed:
                break;
        }
    }
    return std::unexpected(
        Diagnostics{{path, 0, "its files are being changed by another program; try again when it is done"}});
}

std::expected<Diagnostics, Diagnostics> OpenBytes(Workspace& workspace, const fs::path& name,
                                                  std::string bytes, const OpenOptions& options) {
    if (!ComponentTypeOf(name)) {
        return std::unexpected(
            Diagnostics{{name, 0,
                         "is no name of a component; its ending tells the kind: .bas, .cls, "
                         ".frm, .ctl, .pag, .dob or .dsr"}});
    }
    const PlannedComponent plan{.path = name, .entry = {}};
    Loaded loaded{&plan, nullptr, {}, std::nullopt};
    Parse(options.codePage ? options.codePage : DefaultEncoding(), std::move(bytes), loaded);
    if (loaded.error) {
        return std::unexpected(Diagnostics{*std::move(loaded.error)});
    }
    auto project = std::make_unique<Project>(FromUtf8(name.stem().string()), name);
    project->Add(std::move(loaded.component));
    workspace.Add(std::move(project));
    return std::move(loaded.warnings);
}

}  // namespace lintara::workspace
