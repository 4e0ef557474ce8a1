// The kinds of path that can be opened, and the folders in which a run on such a path leaves its marks: its
// lock while it works, a journal while it saves.
#pragma once

#include "workspace/diagnostic.h"

#include <expected>
#include <filesystem>
#include <vector>

namespace lintara::workspace {

enum class PathKind : unsigned char { Folder, ProjectFile, ProjectGroup, Component };

// The file itself where `path` is a symbolic link to a project or a project group: what such a file names
// lies beside the file, not beside a link to it. Other paths, and links that lead nowhere, stay as they are.
[[nodiscard]] std::filesystem::path WithoutProjectLink(const std::filesystem::path& path);

// What `path` is. The error tells why it cannot be opened.
[[nodiscard]] std::expected<PathKind, Diagnostic> KindOf(const std::filesystem::path& path);

// The folder of the project, of each project of a group; the first is the one of `path` itself.
[[nodiscard]] std::expected<std::vector<std::filesystem::path>, Diagnostic> ProjectFolders(
    const std::filesystem::path& path);

}  // namespace lintara::workspace
