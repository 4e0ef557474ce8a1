// Paths as texts, for settings and for whatever hands folders around as texts, and back.
//
// A path is bytes. Those that are UTF-8 become the text that they spell; every other byte becomes the
// unpaired surrogate U+DC00 + byte, which UTF-8 cannot spell. So every path comes back exactly.
#pragma once

#include "base/text.h"

#include <filesystem>
#include <optional>

namespace lintara::platform {

[[nodiscard]] Text PathToText(const std::filesystem::path& path);

// None for a text that no path becomes: with a NUL, or another unpaired surrogate.
[[nodiscard]] std::optional<std::filesystem::path> PathFromText(TextView text);

// The folder as the settings hold folders: from the root on, without a separator at its end; that of the root
// stays.
[[nodiscard]] Text FolderToText(const std::filesystem::path& folder);

// The path of a file that is given as a folder, a backslash and the file's name. A backslash further in front
// is a character like any other: folders may be called so here.
[[nodiscard]] std::optional<std::filesystem::path> FilePathFromText(TextView text);

}  // namespace lintara::platform
