#include "workspace/save.h"

#include "workspace/encoding.h"
#include "workspace/parallel.h"
#include "workspace/path_resolver.h"
#include "workspace/replace_files.h"
#include "workspace/unencodable.h"
#include "workspace/writable_area.h"

#include <optional>
#include <system_error>
#include <unordered_map>
#include <unordered_set>

namespace lintara::workspace {

namespace fs = std::filesystem;

namespace {

std::vector<ChangedFile> EditedFiles(const Workspace& workspace) {
    std::vector<ChangedFile> edited;
    for (const auto& project : workspace.projects()) {
        for (const auto& component : project->components()) {
            if (!component->path.empty() && component->module->edited()) {
                edited.push_back({project.get(), component.get()});
            }
        }
    }
    return edited;
}

bool Differs(const Module& module) {
    std::string room;
    return MarkOf(module.CurrentBytes(room)) != module.originalMark();
}

fs::path FolderOfProject(const Project& project) {
    std::error_code error;
    return fs::is_directory(project.path(), error) ? project.path() : FolderOf(project.path());
}

std::vector<fs::path> FoldersOf(const Workspace& workspace) {
    std::vector<fs::path> folders;
    for (const auto& project : workspace.projects()) {
        if (!project->path().empty()) {
            folders.push_back(FolderOfProject(*project));
        }
    }
    return folders;
}

fs::path TreeOfProject(const Project& project) {
    return project.tree().empty() ? TreeOf(project.path()) : project.tree();
}

ComponentOrigin OriginOf(const ChangedFile& changed) {
    const std::int64_t line = changed.component->projectFileLine;
    return {line > 0 ? changed.project->path() : fs::path(), line, ToUtf8(changed.component->name)};
}

FileChange ChangeOf(const ChangedFile& changed) {
    const Module& module = *changed.component->module;
    return {.path = changed.component->path,
            .identity = changed.component->identity,
            .original = module.originalMark(),
            .appendNew = [&module](std::string& bytes) { module.AppendCurrentBytes(bytes); },
            .projectFolder = FolderOfProject(*changed.project),
            .projectName = ToUtf8(changed.project->name()),
            .tree = TreeOfProject(*changed.project),
            .origin = OriginOf(changed)};
}

// Where paths really lead. Most files of a project lie in few folders, each of which is asked for once.
class RealPaths {
  public:
    fs::path Of(const fs::path& path) {
        std::error_code error;
        if (fs::is_symlink(path, error)) {
            const fs::path file = fs::canonical(path, error);
            return error ? path : file;
        }
        const fs::path folder = FolderOf(path);
        const auto [known, isNew] = folders_.try_emplace(folder.native());
        if (isNew) {
            known->second = fs::canonical(folder, error);
        }
        return known->second / path.filename();
    }

  private:
    std::unordered_map<std::string, fs::path> folders_;
};

// What their files cannot hold.
Diagnostics UnencodableOf(const std::vector<ChangedFile>& files) {
    std::vector<std::optional<Diagnostic>> found(files.size());
    InParallel(files.size(), [&](std::size_t i) { found[i] = UnencodableIn(*files[i].component); });
    Diagnostics errors;
    for (std::optional<Diagnostic>& error : found) {
        if (error) {
            errors.push_back(*std::move(error));
        }
    }
    return errors;
}

// Backups that would replace a file which belongs to the projects.
Diagnostics BackupsInTheWay(const Workspace& workspace, const std::vector<ChangedFile>& edited,
                            const std::string& suffix) {
    RealPaths realPaths;
    std::unordered_set<std::string> files;
    for (const auto& project : workspace.projects()) {
        files.insert(realPaths.Of(project->path()).native());
        for (const fs::path& file : project->otherFiles()) {
            files.insert(realPaths.Of(file).native());
        }
        for (const auto& component : project->components()) {
            files.insert(realPaths.Of(component->path).native());
        }
    }
    Diagnostics errors;
    for (const ChangedFile& changed : edited) {
        const fs::path backup = realPaths.Of(changed.component->path).native() + suffix;
        if (files.contains(backup.native()) && Differs(*changed.component->module)) {
            errors.push_back(
                {backup, 0, "belongs to the project, so it cannot become a backup; choose another suffix"});
        }
    }
    return errors;
}

}  // namespace

std::vector<ChangedFile> ChangedFiles(const Workspace& workspace) {
    std::vector<ChangedFile> files = EditedFiles(workspace);
    std::vector<char> differs(files.size());
    InParallel(files.size(),
               [&](std::size_t i) { differs[i] = Differs(*files[i].component->module) ? 1 : 0; });
    std::vector<ChangedFile> changed;
    for (std::size_t i = 0; i < files.size(); ++i) {
        if (differs[i] != 0) {
            changed.push_back(files[i]);
        }
    }
    return changed;
}

Diagnostics ChangesOutside(const std::vector<ChangedFile>& files,
                           const std::vector<fs::path>& allowedOutside) {
    Diagnostics outside;
    RealPaths realPaths;
    for (const ChangedFile& changed : files) {
        const WritableArea area{TreeOfProject(*changed.project), allowedOutside};
        const fs::path& path = changed.component->path;
        const fs::path file = realPaths.Of(path);
        if (!area.Holds(file)) {
            outside.push_back(OutsideOf(area, path, file, OriginOf(changed)));
        }
    }
    return outside;
}

std::expected<std::vector<fs::path>, Diagnostics> Save(const Workspace& workspace,
                                                       const SaveOptions& options) {
    const std::vector<ChangedFile> edited = EditedFiles(workspace);
    if (Diagnostics errors = UnencodableOf(edited); !errors.empty()) {
        return std::unexpected(std::move(errors));
    }
    if (!options.backupSuffix.empty()) {
        if (Diagnostics errors = BackupsInTheWay(workspace, edited, options.backupSuffix); !errors.empty()) {
            return std::unexpected(std::move(errors));
        }
    }
    std::vector<FileChange> changes;
    for (const ChangedFile& changed : edited) {
        changes.push_back(ChangeOf(changed));
    }
    return ReplaceFiles(std::move(changes), FoldersOf(workspace), options);
}

void AcceptSaved(Workspace& workspace) {
    for (const auto& project : workspace.projects()) {
        for (const auto& component : project->components()) {
            if (component->path.empty() || !component->module->edited() || !Differs(*component->module)) {
                continue;
            }
            component->module = component->module->Saved();
            // Who wrote the file last is not known for certain, so the next save compares what it holds.
            component->identity = {};
        }
    }
}

}  // namespace lintara::workspace
