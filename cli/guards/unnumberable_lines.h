// Lines that no compiler accepts with a line number in front, though numbering puts one there: directives,
// and the first Case of a Select Case when comments or labels stand between the two.
#pragma once

#include "base/text.h"

#include <cstddef>
#include <span>
#include <vector>

namespace lintara::cli {

// Replaces `indexes` by those of such lines among `lines`, the body of a procedure without numbers. A
// statement of several physical lines is told by its first.
void FindUnnumberableLines(std::span<const Text> lines, std::vector<std::size_t>& indexes);

}  // namespace lintara::cli
