// Finding files by the paths that project files hold: backslashes between the segments, and the letter case
// of a disk that does not tell cases apart. Folders are listed once and remembered.
#pragma once

#include "base/text.h"

#include <expected>
#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace lintara::workspace {

class PathResolver {
  public:
    // Why a path leads nowhere.
    struct Failure {
        bool missing = false;  // else two candidates differ only in case
        std::string message;   // for people
    };

    // The file that `written` (UTF-8) names, seen from `folder`. Each segment is matched exactly if possible,
    // else without regard to case; two candidates that differ only in case are a failure. Paths of drives and
    // of other machines lead nowhere, and so do those that no system has.
    [[nodiscard]] std::expected<std::filesystem::path, Failure> Resolve(const std::filesystem::path& folder,
                                                                        std::string_view written);

    // The names in `folder` that are `name` without regard to case, in the order of their bytes.
    [[nodiscard]] const std::vector<std::string>& Candidates(const std::filesystem::path& folder,
                                                             std::string_view name);

  private:
    using Listing = std::unordered_map<Text, std::vector<std::string>>;  // by folded name

    const Listing& List(const std::filesystem::path& folder);
    [[nodiscard]] std::expected<std::filesystem::path, Failure> Step(const std::filesystem::path& folder,
                                                                     std::string_view segment);

    std::unordered_map<std::string, Listing> listings_;
};

// `path` from the root, without "." and "..": a ".." behind a symbolic link leads where the link's target is.
[[nodiscard]] std::filesystem::path AbsolutePath(const std::filesystem::path& path);

// The folder that holds `path`, never empty.
[[nodiscard]] std::filesystem::path FolderOf(const std::filesystem::path& path);

}  // namespace lintara::workspace
