#include "workspace/project_folders.h"

#include "workspace/characters.h"
#include "workspace/component_file.h"
#include "workspace/limits.h"
#include "workspace/path_resolver.h"
#include "workspace/project_file.h"
#include "workspace/read_file.h"

#include <algorithm>
#include <cerrno>
#include <string>
#include <sys/stat.h>
#include <system_error>

namespace lintara::workspace {

namespace fs = std::filesystem;

fs::path WithoutProjectLink(const fs::path& path) {
    const Text extension = FromUtf8(path.extension().string());
    const bool isProject = SameName(extension, u".vbp") || SameName(extension, u".vbg");
    std::error_code error;
    if (!isProject || !fs::is_symlink(path, error)) {
        return path;
    }
    fs::path file = fs::canonical(path, error);
    return error ? path : file;
}

std::expected<PathKind, Diagnostic> KindOf(const fs::path& path) {
    struct stat status {};
    if (::stat(path.c_str(), &status) != 0) {
        return std::unexpected(Diagnostic{path, 0, "cannot be opened: " + SystemMessage(errno)});
    }
    if (S_ISDIR(status.st_mode)) {
        return PathKind::Folder;
    }
    if (!S_ISREG(status.st_mode)) {
        return std::unexpected(Diagnostic{path, 0, KindMessage(status)});
    }
    const Text extension = FromUtf8(path.extension().string());
    if (SameName(extension, u".vbp")) {
        return PathKind::ProjectFile;
    }
    if (SameName(extension, u".vbg")) {
        return PathKind::ProjectGroup;
    }
    if (ComponentTypeOf(path)) {
        return PathKind::Component;
    }
    return std::unexpected(
        Diagnostic{path, 0,
                   "is no project (.vbp), project group (.vbg), folder or component (.bas, .cls, .frm, .ctl, "
                   ".pag, .dob, .dsr)"});
}

std::expected<std::vector<fs::path>, Diagnostic> ProjectFolders(const fs::path& path) {
    const fs::path target = WithoutProjectLink(path);
    const auto kind = KindOf(target);
    if (!kind) {
        return std::unexpected(kind.error());
    }
    std::vector<fs::path> folders = {*kind == PathKind::Folder ? target : FolderOf(target)};
    if (*kind != PathKind::ProjectGroup) {
        return folders;
    }
    // What is wrong with a group is told when it is opened.
    const auto content = ReadFile(target, largestProjectFile);
    const auto group =
        content ? ParseGroupFile(target, content->bytes, DefaultEncoding()) : std::unexpected(Diagnostic{});
    if (group && group->projects.size() <= mostProjects) {
        PathResolver resolver;
        for (const FileEntry& entry : group->projects) {
            const auto project = resolver.Resolve(folders.front(), entry.path);
            const fs::path folder = project ? FolderOf(WithoutProjectLink(*project)) : folders.front();
            if (std::ranges::find(folders, folder) == folders.end()) {
                folders.push_back(folder);
            }
        }
    }
    return folders;
}

}  // namespace lintara::workspace
