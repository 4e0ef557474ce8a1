#include "workspace/project_plan.h"

#include "workspace/component_file.h"
#include "workspace/path_resolver.h"
#include "workspace/project_folders.h"
#include "workspace/read_file.h"

#include <algorithm>
#include <string>
#include <system_error>
#include <unordered_map>
#include <utility>

namespace lintara::workspace {

namespace fs = std::filesystem;

namespace {

Text StemOf(const fs::path& path) {
    return FromUtf8(path.stem().string());
}

// The name of a folder, also of "." and of "x/".
Text FolderName(const fs::path& folder) {
    const Text name = FromUtf8(AbsolutePath(folder).filename().string());
    return name.empty() ? u"Project" : name;
}

bool IsHidden(const fs::path& path) {
    return path.filename().string().starts_with('.');
}

class Planner {
  public:
    explicit Planner(const OpenOptions& options)
        : options_(options), codePage_(options.codePage ? options.codePage : DefaultEncoding()) {}

    std::expected<ProjectPlan, Diagnostics> Plan(const fs::path& given) {
        const fs::path path = WithoutProjectLink(given);
        const auto kind = KindOf(path);
        if (!kind) {
            return std::unexpected(Diagnostics{kind.error()});
        }
        switch (*kind) {
            case PathKind::ProjectFile:
                PlanProjectFile(path);
                break;
            case PathKind::ProjectGroup:
                PlanGroup(path);
                break;
            case PathKind::Folder:
                PlanFolder(path);
                break;
            case PathKind::Component:
                plan_.projects.push_back({StemOf(path), path, {{path, {}}}, {}});
                break;
        }
        if (!errors_.empty()) {
            return std::unexpected(std::move(errors_));
        }
        return std::move(plan_);
    }

  private:
    void PlanProjectFile(const fs::path& path);
    void PlanGroup(const fs::path& path);
    void PlanFolder(const fs::path& folder);
    void ListFolder(const fs::path& folder, std::vector<fs::path>& found);
    void AddComponents(const std::vector<FileEntry>& entries, PlannedProject& project);

    std::optional<fs::path> Find(const fs::path& file, const FileEntry& entry, const char* what);
    void ReportMissing(const fs::path& file, const FileEntry& entry, std::string message);

    const OpenOptions& options_;
    EncodingPtr codePage_;
    PathResolver resolver_;
    ProjectPlan plan_;
    Diagnostics errors_;
};

void Planner::ReportMissing(const fs::path& file, const FileEntry& entry, std::string message) {
    Diagnostics& kept = options_.unreadable ? plan_.unreadable : errors_;
    (options_.skipMissing ? plan_.warnings : kept).push_back({file, entry.line, std::move(message)});
}

// The file that an entry of `file` names.
std::optional<fs::path> Planner::Find(const fs::path& file, const FileEntry& entry, const char* what) {
    const std::string name = std::string(what) + " \"" + entry.path + "\"";
    if (entry.path.empty()) {
        errors_.push_back({file, entry.line, "this line names no file"});
        return std::nullopt;
    }
    auto found = resolver_.Resolve(FolderOf(file), entry.path);
    if (found) {
        return *std::move(found);
    }
    if (found.error().missing) {
        ReportMissing(file, entry, name + " is missing: " + found.error().message);
    } else {
        errors_.push_back({file, entry.line, name + " is ambiguous: " + found.error().message});
    }
    return std::nullopt;
}

void Planner::AddComponents(const std::vector<FileEntry>& entries, PlannedProject& project) {
    std::unordered_map<std::string, std::int64_t> lineOf;
    for (const FileEntry& entry : entries) {
        const auto found = Find(project.path, entry, "the component");
        if (!found) {
            continue;
        }
        const auto [known, isNew] = lineOf.try_emplace(found->string(), entry.line);
        if (!isNew) {
            errors_.push_back({project.path, entry.line,
                               "names the file " + found->string() + " again, after line " +
                                   std::to_string(known->second) + "; remove one of the two lines"});
            continue;
        }
        project.components.push_back({*found, entry});
    }
}

void Planner::PlanProjectFile(const fs::path& path) {
    const auto content = ReadFile(path);
    if (!content) {
        errors_.push_back({path, 0, content.error()});
        return;
    }
    const auto file = ParseProjectFile(path, content->bytes, codePage_);
    if (!file) {
        errors_.push_back(file.error());
        return;
    }
    PlannedProject project{file->name.empty() ? StemOf(path) : file->name, path, {}, {}};
    AddComponents(file->components, project);
    for (const FileEntry& entry : file->others) {
        if (auto found = resolver_.Resolve(FolderOf(path), entry.path)) {
            project.otherFiles.push_back(*std::move(found));
        }
    }
    plan_.projects.push_back(std::move(project));
}

void Planner::PlanGroup(const fs::path& path) {
    const auto content = ReadFile(path);
    const auto group = content ? ParseGroupFile(path, content->bytes, codePage_)
                               : std::unexpected(Diagnostic{path, 0, content.error()});
    if (!group) {
        errors_.push_back(group.error());
        return;
    }
    plan_.isGroup = true;
    if (group->projects.empty()) {
        errors_.push_back({path, 0, "the project group names no project"});
    }
    std::unordered_map<std::string, std::int64_t> lineOf;
    for (std::size_t i = 0; i < group->projects.size(); ++i) {
        const FileEntry& entry = group->projects[i];
        const auto found = Find(path, entry, "the project");
        if (!found) {
            continue;
        }
        const auto [known, isNew] = lineOf.try_emplace(found->string(), entry.line);
        if (!isNew) {
            errors_.push_back({path, entry.line,
                               "names the project " + found->string() + " again, after line " +
                                   std::to_string(known->second) + "; remove one of the two lines"});
            continue;
        }
        if (i == group->startup) {
            plan_.startup = plan_.projects.size();
        }
        PlanProjectFile(WithoutProjectLink(*found));
    }
    if (!plan_.projects.empty()) {
        plan_.projects.front().otherFiles.push_back(path);
    }
}

void Planner::ListFolder(const fs::path& folder, std::vector<fs::path>& found) {
    std::error_code error;
    fs::directory_iterator entry(folder, error);
    for (const fs::directory_iterator end; !error && entry != end; entry.increment(error)) {
        std::error_code ignored;
        const fs::path path = folder == "." ? entry->path().filename() : entry->path();
        if (IsHidden(path)) {
            continue;
        }
        const bool isFolder = entry->is_directory(ignored);
        if (!isFolder && ComponentTypeOf(path)) {
            found.push_back(path);
        } else if (isFolder && options_.recursive && !entry->is_symlink(ignored)) {
            ListFolder(path, found);
        }
    }
    if (error) {
        errors_.push_back({folder, 0, "cannot be read: " + SystemMessage(error.value())});
    }
}

void Planner::PlanFolder(const fs::path& folder) {
    std::vector<fs::path> found;
    ListFolder(folder, found);
    std::ranges::sort(found);
    if (found.empty() && errors_.empty()) {
        errors_.push_back({folder, 0,
                           "holds no component file (.bas, .cls, .frm, .ctl, .pag, .dob, .dsr)" +
                               std::string(options_.recursive ? "" : "; --recursive looks below it, too")});
    }
    PlannedProject project{FolderName(folder), folder, {}, {}};
    for (fs::path& path : found) {
        project.components.push_back({std::move(path), {}});
    }
    plan_.projects.push_back(std::move(project));
}

}  // namespace

std::expected<ProjectPlan, Diagnostics> PlanProjects(const fs::path& path, const OpenOptions& options) {
    return Planner(options).Plan(path);
}

}  // namespace lintara::workspace
