// The map that comes with a numbered copy of a project: which line of the sources each number of the copy
// stands for. One JSON object:
//
//   version      1
//   numbering    "procedure" or "module"
//   base, step   of the numbers
//   components   of each: project, component, file (from the project's folder on, with slashes), copy (the
//                checksum of the numbered file), procedures
//   procedures   of each that has numbers: name, kind, line and fileLine of its header, checksum of its
//   lines,
//                numbers, and inserted when there are any
//   numbers      [number, line, fileLine] of each: the line as the IDE shows it, and the line of the file
//   inserted     the same of lines that the sources do not have; the line is the procedure's first or last
//   one
#pragma once

#include "cli/numbers/placed_numbers.h"
#include "cli/options.h"
#include "workspace/workspace.h"

#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::cli {

inline constexpr std::string_view numberMapName = "lintara-map.json";
// Bytes; room for four million numbers.
inline constexpr std::int64_t largestMap = std::int64_t{64} << 20;

struct MappedComponent {
    Text project;
    Text component;
    std::string file;
    std::optional<std::uint64_t> copy;  // checksum of the numbered file; none in older maps
    std::vector<NumberedProcedure> procedures;
};

struct NumberMap {
    NumberOptions numbers;
    std::vector<MappedComponent> components;
};

// The map of the projects as they are now, as it is written.
[[nodiscard]] std::string NumberMapText(const workspace::Workspace& workspace, const NumberOptions& numbers);

// The error is a sentence for people that does not name the file. Lines of inserted numbers in the copy
// (`now`) are not in the map, and stay 0.
[[nodiscard]] std::expected<NumberMap, std::string> ParseNumberMap(std::string_view bytes);

// Removes a map that this program wrote into the folder, so that no older one stays beside another copy. A
// file of that name that is none stays. The error is a sentence that does not name the file.
[[nodiscard]] std::expected<void, std::string> RemoveNumberMap(const std::filesystem::path& folder);

// A component's file from its project's folder on, with slashes.
[[nodiscard]] std::string FileInProject(const workspace::Project& project,
                                        const workspace::Component& component);

}  // namespace lintara::cli
