#include "tests/project/include_arrows.h"

#include <algorithm>
#include <fstream>
#include <iterator>
#include <ranges>
#include <regex>

namespace lintara::project {
namespace {

// The words in backticks that end in a slash, without it: the folders that a cell names.
std::vector<std::string> FoldersIn(const std::string& cell) {
    static const std::regex folder("`([a-z0-9_/]+)/`");
    std::vector<std::string> names;
    for (std::sregex_iterator match(cell.begin(), cell.end(), folder), end; match != end; ++match) {
        names.push_back((*match)[1]);
    }
    return names;
}

std::vector<std::string> CellsOf(const std::string& row) {
    std::vector<std::string> cells;
    for (const auto part : row | std::views::split('|')) {
        cells.emplace_back(part.begin(), part.end());
    }
    return cells;
}

void AddReachable(const ArrowTable& direct, const std::string& folder, std::set<std::string>& reached) {
    const auto row = direct.find(folder);
    if (!reached.insert(folder).second || row == direct.end()) {
        return;
    }
    for (const std::string& next : row->second.mayInclude) {
        AddReachable(direct, next, reached);
    }
}

// The standard library's headers are the ones whose names have no ending.
bool IsStandardHeader(const std::string& target) {
    return !target.contains('.') && !target.contains('/');
}

}  // namespace

std::vector<Include> IncludesOf(std::string_view source) {
    static const std::regex directive(R"(^[ \t]*#[ \t]*include[ \t]*(["<])([^">]+)[">])");
    std::vector<Include> includes;
    int number = 0;
    for (const auto part : source | std::views::split('\n')) {
        ++number;
        const std::string line(part.begin(), part.end());
        std::smatch match;
        if (line.contains("include") && std::regex_search(line, match, directive)) {
            includes.push_back({.line = number, .target = match[2], .quoted = match[1] == "\""});
        }
    }
    return includes;
}

ArrowTable ParseArrowTable(std::string_view markdown) {
    ArrowTable direct;
    for (const auto part : markdown | std::views::split('\n')) {
        const std::vector<std::string> cells = CellsOf(std::string(part.begin(), part.end()));
        if (cells.size() != 6 || FoldersIn(cells[1]).size() != 1) {
            continue;
        }
        const std::vector<std::string> targets = FoldersIn(cells[3]);
        direct[FoldersIn(cells[1]).front()] = {.mayInclude = {targets.begin(), targets.end()},
                                               .standardLibraryOnly = cells[4].contains("nothing")};
    }
    ArrowTable table = direct;
    for (auto& [folder, rule] : table) {
        rule.mayInclude.clear();
        AddReachable(direct, folder, rule.mayInclude);
    }
    return table;
}

std::string FolderOf(const ArrowTable& table, std::string_view path) {
    for (const auto& [folder, rule] : table) {
        if (path.starts_with(folder + "/")) {
            return folder;
        }
    }
    return "";
}

std::vector<std::string> ForbiddenArrows(const ArrowTable& table, const std::vector<SourceFile>& files) {
    std::vector<std::string> complaints;
    for (const SourceFile& file : files) {
        const std::string folder = FolderOf(table, file.path);
        if (folder.empty()) {
            complaints.push_back(file.path + ": lies in no folder of the table");
            continue;
        }
        const FolderRule& rule = table.at(folder);
        for (const Include& include : IncludesOf(file.text)) {
            const std::string place = file.path + ":" + std::to_string(include.line) + ": " + folder + "/ ";
            const std::string target = FolderOf(table, include.target);
            if (include.quoted && !rule.mayInclude.contains(target)) {
                complaints.push_back(place + "must not include \"" + include.target + "\"");
            }
            if (!include.quoted && rule.standardLibraryOnly && !IsStandardHeader(include.target)) {
                complaints.push_back(place + "uses the standard library alone, not <" + include.target + ">");
            }
        }
    }
    return complaints;
}

std::string ReadFile(const std::filesystem::path& path) {
    std::ifstream stream(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

std::vector<SourceFile> ReadSources(const ArrowTable& table, const std::filesystem::path& root) {
    std::vector<SourceFile> files;
    for (const auto& [folder, rule] : table) {
        if (!std::filesystem::is_directory(root / folder)) {
            continue;
        }
        for (const auto& entry : std::filesystem::recursive_directory_iterator(root / folder)) {
            const std::string ending = entry.path().extension().string();
            if (entry.is_regular_file() && (ending == ".h" || ending == ".cpp")) {
                files.push_back({.path = std::filesystem::relative(entry.path(), root).generic_string(),
                                 .text = ReadFile(entry.path())});
            }
        }
    }
    std::ranges::sort(files, {}, &SourceFile::path);
    return files;
}

}  // namespace lintara::project
