// The lock that lets runs on one project follow each other.
#pragma once

#include "workspace/diagnostic.h"

#include <expected>
#include <filesystem>
#include <memory>
#include <vector>

namespace lintara::workspace {

class FolderLock;

// While it lives, no other process saves the project that `path` names. The lock is taken before the project
// is opened and held until it is saved. It lies on the project's folder itself (of a group, on the folder of
// each project), so it leaves no file behind and ends with its process. Within one process a lock on the same
// project is shared.
class ProjectLock {
  public:
    // Waits up to `seconds` for another holder; the error names it.
    [[nodiscard]] static std::expected<ProjectLock, Diagnostic> Acquire(const std::filesystem::path& path,
                                                                        double seconds);
    // The same for folders that are known already.
    [[nodiscard]] static std::expected<ProjectLock, Diagnostic> AcquireFolders(
        const std::vector<std::filesystem::path>& folders, double seconds);

    ProjectLock(ProjectLock&& other) noexcept;
    ProjectLock& operator=(ProjectLock&& other) noexcept;
    ~ProjectLock();

  private:
    ProjectLock() = default;

    std::vector<std::shared_ptr<const FolderLock>> folders_;
};

}  // namespace lintara::workspace
