// Opening of projects on disk: project files, project groups, folders of exported modules, single components.
#pragma once

#include "workspace/diagnostic.h"
#include "workspace/encoding.h"
#include "workspace/workspace.h"

#include <expected>
#include <filesystem>
#include <functional>
#include <string>

namespace lintara::workspace {

struct OpenOptions {
    EncodingPtr codePage;      // for files without a byte order mark; null: windows-1252
    bool recursive = false;    // of a folder, what lies below it too
    bool skipMissing = false;  // components that the disk lacks are warnings, not an error
    // Called for each component that cannot be read or that the disk lacks, which then is left out; its file
    // stays one of the project's. The same of a group's projects that the disk lacks. Without this, they are
    // errors. What `skipMissing` makes a warning is none of these.
    std::function<void(const Diagnostic& problem)> unreadable;
    // Called now and then from the opening thread with the components read so far and all of them.
    std::function<void(std::size_t done, std::size_t total)> progress;
};

// Opens what `path` names and adds its projects to `workspace`; of a group, the startup project becomes the
// active one. Files are read in parallel. The value holds warnings. On error the workspace is as it was, and
// the diagnostics tell all that was wrong, not the first thing only.
//
// A save that was interrupted is finished or undone before anything is read. No lock is needed to read: when
// files change while they are read, all are read again, so that no mixture of two states is opened. To edit
// and save, hold a ProjectLock from before the call.
[[nodiscard]] std::expected<Diagnostics, Diagnostics> Open(Workspace& workspace,
                                                           const std::filesystem::path& path,
                                                           const OpenOptions& options);

// Adds a project of the one component in `bytes`, as if they were the content of a file of that name. Nothing
// is read from the disk, and nothing must be saved there: `name` is for its kind and for messages.
[[nodiscard]] std::expected<Diagnostics, Diagnostics> OpenBytes(Workspace& workspace,
                                                                const std::filesystem::path& name,
                                                                std::string bytes,
                                                                const OpenOptions& options);

}  // namespace lintara::workspace
