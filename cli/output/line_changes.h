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

// The changes in order; between two of them stands at least one line that stayed. They are few, though not
// always the fewest: the time grows with the number of lines alone, however much differs.
[[nodiscard]] std::vector<LineChange> CompareLines(const FileLines& before, const FileLines& after);

// How many lines were changed, inserted or deleted; a line that gave way to another counts once.
[[nodiscard]] std::size_t CountChangedLines(const std::vector<LineChange>& changes);

}  // namespace lintara::cli
