// Lines that removal changes though insertion never does. They have to be put back, or removal after
// insertion would not restore the procedure.
#pragma once

#include "base/text.h"
#include "cli/guards/existing_numbers.h"

#include <cstddef>
#include <span>
#include <vector>

namespace lintara::cli {

// The offset, in lines from the first of a body, from which on a numbering left lines alone because its
// offset limit was reached; the number of `lines` when it was not. `numbered` are its lines with numbers, and
// tell its step.
[[nodiscard]] std::size_t FirstLineBeyondLimit(std::span<const Text> lines,
                                               std::span<const NumberedLine> numbered);

// Replaces `indexes` by the lines of the body `lines`, as they are before the removal, that have to be put
// back after it: those of blanks only, those with a label that is no number, those beyond the limit, and
// continuation lines that begin like a numbered line.
void FindLinesToKeep(std::span<const Text> lines, std::span<const NumberedLine> numbered,
                     std::vector<std::size_t>& indexes);

}  // namespace lintara::cli
