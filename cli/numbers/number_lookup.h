// Looks up which line of the sources had a number in a build: in the build's map, or by doing the build's
// insertion in memory again.
#pragma once

#include "cli/numbers/number_map.h"
#include "cli/numbers/placed_numbers.h"
#include "cli/output/report.h"
#include "workspace/workspace.h"

#include <cstdint>
#include <expected>
#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace lintara::cli {

struct NumberQuery {
    std::int64_t number = 0;
    std::string component;  // "": any; may be Project.Component
    std::string procedure;  // "": any
    std::string kind;       // "": any; "Property Get" ...
};

// The numbers of one component in the build.
struct NumberTable {
    Text project;
    Text component;
    std::filesystem::path file;
    std::vector<NumberedProcedure> procedures;  // those without numbers, too
    const workspace::Component* now = nullptr;  // as the sources have it; null: they have it no more
    // When a map tells the procedures: those that the sources have, which may be others.
    std::optional<std::vector<NumberedProcedure>> present = {};
    // What the map tells of the component in the copy.
    std::string mappedFile = {};  // from the map's folder on
    std::optional<std::uint64_t> mappedCopy = {};
};

// What insertion wrote into the modules of the workspace.
[[nodiscard]] std::vector<NumberTable> TablesOf(const workspace::Workspace& workspace);
// What a map says of the projects that are open, together with the procedures of the workspace that have no
// numbers in it. The error, about a map of other projects alone, is a sentence that does not name its file.
[[nodiscard]] std::expected<std::vector<NumberTable>, std::string> TablesOf(
    NumberMap map, const workspace::Workspace& workspace);

// Whether `written`, "" or a name with or without its project, names the component.
[[nodiscard]] bool NamesComponent(const std::string& written, TextView project, TextView component);

struct FoundNumber {
    const NumberTable* table = nullptr;
    const NumberedProcedure* procedure = nullptr;
    SourcePlace place;         // as the sources are now; in changed ones, as they were
    bool inserted = false;     // the line was; the place is the procedure's first or last line
    bool changed = false;      // the sources do not have the procedure as the build found it
    std::optional<Text> text;  // of the source's line; none in changed sources
};

// The error is a sentence about a name that the tables do not have, with near ones.
[[nodiscard]] std::expected<std::vector<FoundNumber>, std::string> FindNumber(
    const std::vector<NumberTable>& tables, const NumberQuery& query);

// Why nothing was found, for people.
[[nodiscard]] std::string NotFoundMessage(const std::vector<NumberTable>& tables, const NumberQuery& query);

}  // namespace lintara::cli
