// Writing of files so that nothing is half there: into new files beside the old ones, flushed before they
// take their place. Each error is a sentence for people, without the path.
#pragma once

#include "workspace/descriptor.h"

#include <expected>
#include <filesystem>
#include <string>
#include <string_view>
#include <sys/stat.h>
#include <vector>

namespace lintara::workspace {

using WriteResult = std::expected<void, std::string>;

// A name that nobody can know beforehand, in the folder of `target`.
class TemporaryNames {
  public:
    TemporaryNames();
    [[nodiscard]] std::filesystem::path Beside(const std::filesystem::path& target, std::size_t index) const;

  private:
    std::string run_;
};

// Makes a file that must not be there yet, for nobody else to read. The error is the system's number.
[[nodiscard]] std::expected<Descriptor, int> CreateNew(const std::filesystem::path& path);

// Why CreateNew failed, for people.
[[nodiscard]] std::string NotCreatedMessage(int error);

[[nodiscard]] WriteResult WriteAll(int descriptor, std::string_view bytes);

// Gives a new file the mode of the file that it will replace, and owner and extended attributes where the
// system lets us.
[[nodiscard]] WriteResult TakeOverAttributes(int descriptor, const std::filesystem::path& original,
                                             const struct stat& status);

// Waits until what was written is on the disk: all files of the file systems that hold `folders`, at once.
[[nodiscard]] WriteResult FlushFileSystems(const std::vector<std::filesystem::path>& folders);
// A file, or a folder with the names in it.
[[nodiscard]] WriteResult Flush(const std::filesystem::path& path);
[[nodiscard]] WriteResult FlushOpened(int descriptor);

// False, with errno, when it failed. `to` is replaced.
[[nodiscard]] bool Rename(const std::filesystem::path& from, const std::filesystem::path& to);
// False, with errno, when the file is still there.
[[nodiscard]] bool Remove(const std::filesystem::path& path);

// Exchanges two files. Where the file system cannot do that in one step, `temporary` takes the place of
// `target`, whose content is kept first under KeptName and then under the name of `temporary`.
[[nodiscard]] WriteResult Exchange(const std::filesystem::path& temporary,
                                   const std::filesystem::path& target);
[[nodiscard]] WriteResult ExchangeInSteps(const std::filesystem::path& temporary,
                                          const std::filesystem::path& target);
[[nodiscard]] std::filesystem::path KeptName(const std::filesystem::path& temporary);

// While it lives, a write past the limit on file sizes fails as on a full disk and does not end the process.
// It is for the thread that makes it and those that it starts.
class FileSizeSignalHeldBack {
  public:
    FileSizeSignalHeldBack();
    ~FileSizeSignalHeldBack();
    FileSizeSignalHeldBack(const FileSizeSignalHeldBack&) = delete;
    FileSizeSignalHeldBack& operator=(const FileSizeSignalHeldBack&) = delete;

  private:
    bool wasBlocked_ = false;
};

}  // namespace lintara::workspace
