// A small file of the user's that several processes change: read whole, replaced whole, one at a time.
#pragma once

#include <chrono>
#include <cstddef>
#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

namespace lintara::platform {

// Errors are sentences for people, without the path: "cannot be read: Permission denied".
template <class T>
using FileResult = std::expected<T, std::string>;

// The file's bytes, no more than `limit`; nullopt when there is no such file.
[[nodiscard]] FileResult<std::optional<std::string>> ReadSmallFile(const std::filesystem::path& path,
                                                                   std::size_t limit);

// While it lives, no other LockedFile has the same file, in this process or another. The lock lies on the
// file itself and ends with the process that holds it.
class LockedFile {
  public:
    // Waits up to `patience` for another holder; where the file system has no locks, does without. Makes an
    // empty file, and the folders above it, for the user alone, when there is none. Symbolic links are
    // followed.
    [[nodiscard]] static FileResult<LockedFile> Open(const std::filesystem::path& path,
                                                     std::chrono::milliseconds patience);

    LockedFile(LockedFile&& other) noexcept;
    LockedFile& operator=(LockedFile&& other) = delete;
    ~LockedFile();

    // Whether others are kept out. Some file systems have no locks.
    [[nodiscard]] bool isLocked() const { return isLocked_; }

    // No more than `limit` bytes.
    [[nodiscard]] FileResult<std::string> Read(std::size_t limit) const;

    // Puts `bytes` in place of the file, which has its old content or the new one at any moment, and keeps
    // its mode. The last call on this object. A failing one leaves the old content.
    [[nodiscard]] FileResult<void> Replace(std::string_view bytes) const;

    // Puts a copy beside the file, where a symbolic link leads: its name and ".bad", or ".bad.1", ".bad.2"
    // and so on when that is taken. A copy that an earlier call made of the same file serves again. The
    // result is its path.
    [[nodiscard]] FileResult<std::filesystem::path> CopyAside() const;

  private:
    LockedFile(int descriptor, std::filesystem::path target, bool isLocked)
        : descriptor_(descriptor), target_(std::move(target)), isLocked_(isLocked) {}

    // What earlier writers, who did not live to see it in place, left beside the file.
    void RemoveLeftovers() const;

    int descriptor_;
    std::filesystem::path target_;  // no symbolic link
    bool isLocked_ = false;
};

}  // namespace lintara::platform
