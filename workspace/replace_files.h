// Gives files new contents, all or none. They are written beside the originals and flushed, a journal names
// them, then they are renamed into place. A run that was interrupted is finished or undone by the next one.
#pragma once

#include "workspace/content_mark.h"
#include "workspace/diagnostic.h"
#include "workspace/file_identity.h"
#include "workspace/save_options.h"
#include "workspace/writable_area.h"

#include <expected>
#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace lintara::workspace {

struct FileChange {
    std::filesystem::path path;  // as messages name it; a symbolic link is followed, not replaced
    FileIdentity identity;       // of the file when it was read
    ContentMark original;        // what it held then
    std::function<void(std::string& bytes)> appendNew;  // from any thread; may append what it held
    std::filesystem::path projectFolder;
    std::string projectName;     // for messages
    std::filesystem::path tree;  // below which the file has to lie, as TreeOf tells it
    ComponentOrigin origin;
};

// The value is the files that were written. Refused, with nothing changed, when a file is no longer what was
// read, would change where it may not be written, or anything cannot be written. `folders` are those of all
// projects concerned: their locks are taken, unless this process holds them, and runs on them find the
// journal, those apart in which nothing may be written.
[[nodiscard]] std::expected<std::vector<std::filesystem::path>, Diagnostics> ReplaceFiles(
    std::vector<FileChange> changes, const std::vector<std::filesystem::path>& folders,
    const SaveOptions& options);

}  // namespace lintara::workspace
