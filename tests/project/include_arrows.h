// Which folder includes which, compared with the table of docs/architecture.md.
#pragma once

#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::project {

struct Include {
    int line = 0;
    std::string target;
    bool quoted = false;  // "target", else <target>
};

// The include directives of a source text; those in comments are none.
[[nodiscard]] std::vector<Include> IncludesOf(std::string_view source);

struct FolderRule {
    std::set<std::string> mayInclude;  // itself, the folders of its row, and what those may include
    bool standardLibraryOnly = false;
};

// The rows of the document's table, by folder ("base", "ui/qt").
using ArrowTable = std::map<std::string, FolderRule>;
[[nodiscard]] ArrowTable ParseArrowTable(std::string_view markdown);

// The folder of the table that a path from the root lies in; "" when there is none.
[[nodiscard]] std::string FolderOf(const ArrowTable& table, std::string_view path);

struct SourceFile {
    std::string path;  // from the root, with slashes
    std::string text;
};

// One sentence for every include that the table forbids, "path:line: ...".
[[nodiscard]] std::vector<std::string> ForbiddenArrows(const ArrowTable& table,
                                                       const std::vector<SourceFile>& files);

// The headers and sources in the folders of the table below `root`.
[[nodiscard]] std::vector<SourceFile> ReadSources(const ArrowTable& table, const std::filesystem::path& root);
[[nodiscard]] std::string ReadFile(const std::filesystem::path& path);

}  // namespace lintara::project
