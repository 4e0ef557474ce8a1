// What differs between two states of a file, line by line.
#pragma once

#include "workspace/encoding.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace lintara::cli {

// Lines [beforeBegin, beforeEnd) of the one state, by index from 0, became [afterBegin, afterEnd).
struct LineChange {
    std::size_t beforeBegin = 0;
    std::size_t beforeEnd = 0;
    std::size_t afterBegin = 0;
    std::size_t afterEnd = 0;

    friend bool operator==(const LineChange&, const LineChange&) = default;
};

// The lines of a file with their endings, as views of its bytes.
using FileLines = std::vector<std::string_view>;

[[nodiscard]] FileLines SplitFile(std::string_view bytes, const workspace::Encoding& encoding);

// Linear in the number of lines: states of as many lines are compared line by line, which is exact for edits
// that insert and delete none. Otherwise one change spans all from the first difference to the last.
[[nodiscard]] std::vector<LineChange> CompareLines(const FileLines& before, const FileLines& after);

// How many lines were changed, inserted or deleted.
[[nodiscard]] std::size_t CountChangedLines(const std::vector<LineChange>& changes);

}  // namespace lintara::cli
