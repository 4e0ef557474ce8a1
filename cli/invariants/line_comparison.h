// Whether a line of the file before an edit and one after it are the same code, once what edits may put in
// front of it or replace in it is taken back. Written out on its own, without the code that does the edits.
#pragma once

#include "base/text.h"
#include "cli/invariants/code_lines.h"
#include "cli/invariants/edit_rules.h"

#include <array>
#include <cstddef>
#include <span>
#include <vector>

namespace lintara::cli {

// What may differ in the statements "On Error GoTo ..." of a line.
struct Redirection {
    std::vector<Text> from = {};  // targets that may have become ...
    Text to = {};                 // ... this one

    [[nodiscard]] bool empty() const { return from.empty(); }
};

// How the lines of a body were numbered, counted over the comparisons of one LineComparison.
struct NumberingCount {
    std::size_t numbered = 0;  // a number came, or went
    std::size_t shifted = 0;   // blanks of its width did
};

class LineComparison {
  public:
    LineComparison(const CodeLines& before, const CodeLines& after, NumberRules numbers)
        : before_(before), after_(after), numbers_(numbers) {}

    // Whether line `b` of before may be line `a` of after. Line endings count as far as they can be kept.
    [[nodiscard]] bool IsSame(std::size_t b, std::size_t a, const Redirection& redirection);
    // The same but for the endings: of lines that were deleted and written again.
    [[nodiscard]] bool IsSameText(std::size_t b, std::size_t a, const Redirection& redirection);

    [[nodiscard]] const NumberingCount& count() const { return count_; }

  private:
    [[nodiscard]] bool IsNumberedBytes(std::string_view was, std::string_view is);
    [[nodiscard]] bool HasSameEnding(std::size_t b, std::size_t a) const;

    const CodeLines& before_;
    const CodeLines& after_;
    NumberRules numbers_;
    NumberingCount count_;
    Text textBefore_;
    Text textAfter_;
};

// The texts that a line can have been ahead of numbering: itself, without five digits, a colon and a blank,
// or without seven blanks. Views into `line`.
struct UnnumberedForms {
    explicit UnnumberedForms(TextView line);

    std::array<TextView, 2> forms;
    std::size_t count = 1;
    bool isNumber;  // the second form lacks a number, else blanks
};

// `line` without the number or the blanks of its width, if it has any, and without the blanks that follow.
[[nodiscard]] TextView BareText(TextView line);

// Whether the texts differ in nothing but targets of "On Error GoTo".
[[nodiscard]] bool IsRedirected(TextView before, TextView after, const Redirection& redirection);

}  // namespace lintara::cli
