// Project files and project groups: which files make up a project, as the IDE writes it down.
#pragma once

#include "base/text.h"
#include "hostmodel/member_kind.h"
#include "workspace/diagnostic.h"
#include "workspace/encoding.h"

#include <cstddef>
#include <cstdint>
#include <expected>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::workspace {

// A line that names a file.
struct FileEntry {
    std::int64_t line = 0;
    hostmodel::ComponentType type = hostmodel::ComponentType::Module;  // of a component
    Text name;         // of a component, where the line tells it
    std::string path;  // UTF-8, as it is written
};

struct ProjectFile {
    Text name;  // empty when the file tells none
    std::vector<FileEntry> components;
    std::vector<FileEntry> others;  // resources, documents
};

struct GroupFile {
    std::vector<FileEntry> projects;
    std::size_t startup = 0;  // which of them
};

// `path` is for messages. The text is in `codePage` unless a byte order mark tells another encoding; where
// the code page is UTF-16 and the file is not, it is read as windows-1252.
[[nodiscard]] std::expected<ProjectFile, Diagnostic> ParseProjectFile(const std::filesystem::path& path,
                                                                      std::string_view bytes,
                                                                      const EncodingPtr& codePage);
[[nodiscard]] std::expected<GroupFile, Diagnostic> ParseGroupFile(const std::filesystem::path& path,
                                                                  std::string_view bytes,
                                                                  const EncodingPtr& codePage);

}  // namespace lintara::workspace
