// Where a text stands in a line: in its code, or only in a comment or between quotes. Letter case does not
// matter.
#pragma once

#include "base/text.h"

#include <cstddef>
#include <span>
#include <vector>

namespace lintara::cli {

// Where `sought` occurs anywhere in the line, at `from` or behind it; npos when it does not.
[[nodiscard]] std::size_t FindText(TextView line, TextView sought, std::size_t from = 0);

// For each of `lines`, which begin and end with whole logical lines, how many of its characters are code: its
// comment begins there. A line that continues a comment has none.
[[nodiscard]] std::vector<std::size_t> FindCodeEnds(std::span<const Text> lines);

// Where `sought`, which holds no quotes, occurs in the first `codeEnd` characters and outside of quotes: all
// places, none of which overlap.
[[nodiscard]] std::vector<std::size_t> FindInCode(TextView line, std::size_t codeEnd, TextView sought);

// Whether the two are the same code: letter case counts in comments and between quotes only.
[[nodiscard]] bool IsSameCode(TextView a, TextView b);

}  // namespace lintara::cli
