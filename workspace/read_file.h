// Reading of whole files. But for one function that reads pipes, regular files only: whatever else a path may
// name is refused before it can block.
#pragma once

#include "workspace/file_identity.h"

#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <sys/stat.h>

namespace lintara::workspace {

struct FileContent {
    std::string bytes;
    FileIdentity identity;
};

// The most that is read of any file.
inline constexpr std::int64_t largestFile = std::int64_t{1} << 30;

// The error is a sentence for people, without the path. Files of more than `largest` bytes are refused, and
// so are those that the running system only seems to have, such as /proc/kmsg: they have no size, and reading
// them can wait or have effects.
[[nodiscard]] std::expected<FileContent, std::string> ReadFile(const std::filesystem::path& path,
                                                               std::int64_t largest = largestFile);

// The bytes of a file, or of a pipe to its end: for what a user names on the command line, where a shell puts
// pipes in the place of files. Waits until somebody writes to the pipe. More than `largest` bytes are
// refused.
[[nodiscard]] std::expected<std::string, std::string> ReadFileOrPipe(const std::filesystem::path& path,
                                                                     std::int64_t largest = largestFile);

[[nodiscard]] FileIdentity IdentityOf(const struct stat& status);

// What the system says about an error number, in English whatever the locale is.
[[nodiscard]] std::string SystemMessage(int error);

// "is a folder" and the like: what the path names that is no regular file.
[[nodiscard]] std::string KindMessage(const struct stat& status);

// What to tell people where a path that only this program makes files at, as `use` says ("a mark of ..."),
// names something else; none when it names a file or nothing.
[[nodiscard]] std::optional<std::string> SquatterMessage(const std::filesystem::path& path,
                                                         std::string_view use);

}  // namespace lintara::workspace
