// What an interrupted save left behind, and the ways to finish or undo it.
#pragma once

#include "workspace/diagnostic.h"
#include "workspace/journal.h"
#include "workspace/write_file.h"

#include <expected>
#include <filesystem>
#include <string>
#include <vector>

namespace lintara::workspace {

// Whether a save was interrupted, or is under way, around one of the folders.
[[nodiscard]] bool HasJournal(const std::vector<std::filesystem::path>& folders);

// Puts the old content of a replaced file back, from where it is kept; nothing is left there.
[[nodiscard]] WriteResult UndoReplacement(const Replacement& replacement);

// Deletes what a journal names and is no target, and the journal itself as the last. When a file cannot be
// deleted, the error tells which, and the journal stays, too, so that the next run tries again.
std::expected<void, Diagnostic> RemoveTraces(const Journal& journal);

}  // namespace lintara::workspace
