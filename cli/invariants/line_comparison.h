// Whether a line of the file before an edit and one after it are the same code, once what edits may put in
// front of it or replace in it is taken back. Written out on its own, without the code that does the edits.
#pragma once

#include "base/text.h"
#include "cli/invariants/code_lines.h"

#include <cstddef>
#include <string_view>
#include <vector>

namespace lintara::cli {

// What may differ in the statements "On Error GoTo ..." of a line.
struct Redirection {
    std::vector<Text> from = {};  // targets that may have become ...
    Text to = {};                 // ... this one

    [[nodiscard]] bool empty() const { return from.empty(); }
};

// What became of the numbers of a body, counted over the comparisons of one LineComparison.
struct NumbersGone {
    std::size_t gone = 0;
    std::size_t stayed = 0;
    std::size_t shifted = 0;  // lines that lost blanks of the width of a number
};

class LineComparison {
  public:
    // Whether numbers may have gone, and the blanks of their width.
    LineComparison(const CodeLines& before, const CodeLines& after, bool numbersMayGo)
        : before_(before), after_(after), numbersMayGo_(numbersMayGo) {}

    // Whether line `b` of before may be line `a` of after without its first `width` code units. Line endings
    // count as far as they can be kept.
    [[nodiscard]] bool IsSame(std::size_t b, std::size_t a, std::size_t width,
                              const Redirection& redirection);
    // The same but for the endings: of lines that were deleted and written again.
    [[nodiscard]] bool IsSameText(std::size_t b, std::size_t a, std::size_t width,
                                  const Redirection& redirection);

    [[nodiscard]] const NumbersGone& numbers() const { return numbers_; }

  private:
    template <class View>
    [[nodiscard]] bool LostItsNumber(std::size_t b, View was, View is);
    [[nodiscard]] bool IsContinuation(std::size_t b) const;

    const CodeLines& before_;
    const CodeLines& after_;
    bool numbersMayGo_;
    NumbersGone numbers_;
    Text textBefore_;
    Text textAfter_;
};

// Whether line `a` of after ends as line `b` of before does, as far as that can be kept.
[[nodiscard]] bool HasSameEnding(const CodeLines& before, std::size_t b, const CodeLines& after,
                                 std::size_t a);

// Whether it is the same line, text and ending.
[[nodiscard]] bool IsUntouched(const CodeLines& before, std::size_t b, const CodeLines& after, std::size_t a);

// `line` without the number or the blanks of its width, if it has any, and without the blanks that follow.
[[nodiscard]] TextView BareText(TextView line);

// Whether the texts differ in nothing but targets of "On Error GoTo".
[[nodiscard]] bool IsRedirected(TextView before, TextView after, const Redirection& redirection);

}  // namespace lintara::cli
