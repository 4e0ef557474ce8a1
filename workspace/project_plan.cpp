#include "workspace/project_plan.h"

#include "workspace/characters.h"
#include "workspace/component_file.h"
#include "workspace/limits.h"
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

// A path for a message.
std::string Shortened(const std::string& path) {
    constexpr std::size_t longest = 300;
    return path.size() <= longest ? path : path.substr(0, longest) + "...";
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
    void ListFolders(const fs::path& top, std::vector<fs::path>& found);
    void ListFolder(const fs::path& folder, std::vector<fs::path>& found, std::vector<fs::path>& below);
    void AddComponents(const std::vector<FileEntry>& entries, PlannedProject& project);
    // Counts them; an error when they are too many.
    bool HasRoomFor(std::size_t components, const fs::path& path);

    std::optional<fs::path> Find(const fs::path& file, const FileEntry& entry, const char* what);
    void ReportMissing(const fs::path& file, const FileEntry& entry, std::string message);

    const OpenOptions& options_;
    EncodingPtr codePage_;
    PathResolver resolver_;
    ProjectPlan plan_;
    Diagnostics errors_;
    std::size_t componentCount_ = 0;
};

void Planner::ReportMissing(const fs::path& file, const FileEntry& entry, std::string message) {
    Diagnostics& kept = options_.unreadable ? plan_.unreadable : errors_;
    (options_.skipMissing ? plan_.warnings : kept).push_back({file, entry.line, std::move(message)});
}

// The file that an entry of `file` names.
std::optional<fs::path> Planner::Find(const fs::path& file, const FileEntry& entry, const char* what) {
    const std::string name = std::string(what) + " \"" + Shortened(entry.path) + "\"";
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

bool Planner::HasRoomFor(std::size_t components, const fs::path& path) {
    componentCount_ += components;
    if (componentCount_ > mostComponents) {
        errors_.push_back({path, 0,
                           "has too many components: of all that are opened together there may be " +
                               std::to_string(mostComponents)});
    }
    return componentCount_ <= mostComponents;
}

void Planner::AddComponents(const std::vector<FileEntry>& entries, PlannedProject& project) {
    if (!HasRoomFor(entries.size(), project.path)) {
        return;
    }
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
    const auto content = ReadFile(path, largestProjectFile);
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
    const auto content = ReadFile(path, largestProjectFile);
    const auto group = content ? ParseGroupFile(path, content->bytes, codePage_)
                               : std::unexpected(Diagnostic{path, 0, content.error()});
    if (!group) {
        errors_.push_back(group.error());
        return;
    }
    plan_.isGroup = true;
    if (group->projects.size() > mostProjects) {
        errors_.push_back(
            {path, 0, "names more than " + std::to_string(mostProjects) + " projects, which are too many"});
        return;
    }
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
        const fs::path project = WithoutProjectLink(*found);
        if (SameName(FromUtf8(project.extension().string()), u".vbg")) {
            errors_.push_back(
                {path, entry.line,
                 "names the group " + found->string() + "; a group holds projects (.vbp) only"});
            continue;
        }
        PlanProjectFile(project);
    }
    if (!plan_.projects.empty()) {
        plan_.projects.front().otherFiles.push_back(path);
    }
}

// Folder by folder, so that no more than one is open at any time, however deep they lie.
void Planner::ListFolders(const fs::path& top, std::vector<fs::path>& found) {
    std::vector<fs::path> folders = {top};
    while (!folders.empty() && found.size() <= mostComponents) {
        const fs::path folder = std::move(folders.back());
        folders.pop_back();
        ListFolder(folder, found, folders);
    }
}

void Planner::ListFolder(const fs::path& folder, std::vector<fs::path>& found, std::vector<fs::path>& below) {
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
            below.push_back(path);
        }
    }
    if (error) {
        errors_.push_back({folder, 0, "cannot be read: " + SystemMessage(error.value())});
    }
}

void Planner::PlanFolder(const fs::path& folder) {
    std::vector<fs::path> found;
    ListFolders(folder, found);
    if (!HasRoomFor(found.size(), folder)) {
        return;
    }
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
