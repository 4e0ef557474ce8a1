// The unified diff that people read and `patch` applies.
#pragma once

#include "cli/output/line_changes.h"
#include "workspace/encoding.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::cli {

struct DiffStyle {
    // Colours, for terminals that have them.
    bool color = false;
    // For a terminal: no line ending but a line feed, and control characters as escapes. Otherwise the lines
    // are those that end in a line feed, with all their bytes, so that what is piped can be applied.
    bool printable = false;
    // All of it as UTF-8, for JSON; otherwise like what is piped.
    bool utf8 = false;
};

// The path as a diff names it: without a leading slash, relative where it can be.
[[nodiscard]] std::string DiffLabel(const std::filesystem::path& path);

// Appends the diff of one file to `out`, with three lines of context. The lines are views of one text each;
// they are decoded and written as UTF-8 where the file's own bytes would not do. `label` is the path without
// a leading slash; it gets the usual a/ and b/.
void AppendUnifiedDiff(std::string_view label, const FileLines& before, const FileLines& after,
                       const std::vector<LineChange>& changes, const workspace::Encoding& encoding,
                       DiffStyle style, std::string& out);

}  // namespace lintara::cli
