// Lines that removal would change though insertion never did. They have to be put back, or removal after
// insertion would not restore the procedure, and would pull code to the left that nothing had shifted.
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

// Indexes of lines of a body, in order.
struct LinesToKeep {
    std::vector<std::size_t> all;
    // Those of them that have no number although insertion would give them one, and the lines that go with
    // these. All others follow from the text alone.
    std::vector<std::size_t> unnumbered;
};

// Replaces `kept` by the lines of the body `lines`, as they are before the removal, that have to be put back
// after it: those of blanks only, those with a label that is no number, those beyond the limit, and
// continuation lines that begin like a numbered line.
//
// A line without a number that insertion would number was added to numbered code when most such lines of the
// body have a number, and was shifted with them; otherwise it never was, and is put back. The lines that
// insertion only shifts, continuation lines and the first below Select Case, go with their statement.
void FindLinesToKeep(std::span<const Text> lines, std::span<const NumberedLine> numbered, LinesToKeep& kept);

}  // namespace lintara::cli
