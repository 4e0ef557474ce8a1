// All files below a folder, with their modes, as a value: to compare what a run left, and to begin again.
#pragma once

#include <filesystem>
#include <map>
#include <string>

namespace lintara::faults {

struct FileState {
    unsigned mode = 0;
    std::string bytes;

    friend bool operator==(const FileState&, const FileState&) = default;
};

using FileTree = std::map<std::string, FileState>;

// By their paths relative to the folder; hidden files, too.
[[nodiscard]] FileTree ReadTree(const std::filesystem::path& folder);

// Writes and deletes what differs. Folders that are no longer needed stay.
void RestoreTree(const std::filesystem::path& folder, const FileTree& tree);

// What is different in `actual`, for messages of tests; "" when nothing is.
[[nodiscard]] std::string Differences(const FileTree& expected, const FileTree& actual);

// Files that a run makes for its own purposes: "" when there are none.
[[nodiscard]] std::string Leftovers(const FileTree& tree);

}  // namespace lintara::faults
