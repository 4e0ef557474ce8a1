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

// Puts the old content of a replaced file back. The temporary file is gone afterwards.
[[nodiscard]] WriteResult UndoReplacement(const Replacement& replacement);

// Deletes what a journal names and is no target, and the journal itself as the last.
void RemoveTraces(const Journal& journal);

}  // namespace lintara::workspace
