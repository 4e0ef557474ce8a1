// The letter case of keywords, which the IDE rewrites when a line is committed. The workspace does so for
// what an edit writes and leaves alone what the edit only carries along.
#pragma once

#include "base/text.h"

#include <cstddef>

namespace lintara::workspace {

// A part of a text, in code units: [begin, end).
struct TextPart {
    std::size_t begin = 0;
    std::size_t end = 0;
};

// The part of `newText` that an edit of `oldText` changed: what remains after the longest common beginning
// and then the longest common ending, widened to whole words of `newText` where a cut falls inside one.
[[nodiscard]] TextPart ChangedPart(TextView oldText, TextView newText);

// Gives every keyword that lies in `part` of the text, whose lines are separated by "\r\n", its letter case.
// Words in quotes, in comments, directly after "." or "!" and labels are left as they are.
void SetKeywordCase(Text& text, TextPart part);

}  // namespace lintara::workspace
