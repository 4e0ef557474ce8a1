// The project file, .lintara.toml: options that all who work on a project share. At its top level stand
// options by their names, for every command that has them; a table that is named after a command ([insert],
// [custom.insert]) holds options for that command alone, which win.
//
// It may come with code of strangers. Whatever it holds ends in values or in a UsageError with file and line.
#pragma once

#include "cli/options/command_info.h"
#include "cli/options/given_options.h"

#include <filesystem>
#include <functional>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>

namespace lintara::cli {

inline constexpr std::string_view projectFileName = ".lintara.toml";

// The options of a file, by the place where they stand in it. Their places are "FILE:LINE", and paths among
// their values are made absolute, from the file's folder on.
struct ProjectFile {
    std::filesystem::path path;
    GivenOptions shared;  // of the top level
    std::map<std::string, GivenOptions, std::less<>> ofCommands;

    // What it gives to that command, options that the command does not have left out.
    [[nodiscard]] GivenOptions For(const CommandInfo& command) const;
};

// The file of that name in the project's folder or the nearest one above it; the folder of a path that is
// none is the one that it lies in.
[[nodiscard]] std::optional<std::filesystem::path> FindProjectFile(const std::filesystem::path& project);

// Throws UsageError for what the file says wrongly, and std::runtime_error when it cannot be read.
[[nodiscard]] ProjectFile ReadProjectFile(const std::filesystem::path& path,
                                          std::span<const CommandInfo> commands);

}  // namespace lintara::cli
