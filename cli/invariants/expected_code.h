// The lines that insertion writes into a procedure: worked out from the template a second time, without the
// code that expands it.
//
// Who inserts, on which machine and when is not known here: any text may stand in these places. Whether a
// control's name is known depends on the form, so both is accepted.
#pragma once

#include "base/text.h"
#include "workspace/syntax.h"

#include <cstddef>
#include <span>
#include <string_view>
#include <vector>

namespace lintara::cli {

// What templates ask for that is the same in all procedures of a component.
struct CodeNames {
    TextView project;
    TextView component;
};

class ExpectedCode {
  public:
    ExpectedCode() = default;
    ExpectedCode(TextView code, const CodeNames& names);

    // Fills in what depends on the procedure. The lines are those until the next call.
    std::span<const TextView> LinesFor(TextView member, workspace::ProcedureWord word, bool isControl);
    // Whether the name of a control matters.
    [[nodiscard]] bool asksForControl() const { return asksForControl_; }

  private:
    Text code_;
    bool asksForControl_ = false;
    std::vector<TextView> placeholders_;  // that depend on the procedure, in the order of filling them in
    Text expanded_;
    std::vector<TextView> lines_;
};

// The template with any text in place of each placeholder, line by line: for lines that stand in a procedure
// which nobody can tell.
[[nodiscard]] std::vector<Text> OpenLinesOf(TextView code);

// "Sub", "Function" or "Property".
[[nodiscard]] TextView WordOf(workspace::ProcedureWord word);

// Whether the line, as the file holds it, is the expected one: with the letter case that the IDE gives to
// keywords, or not. The character U+FFFF stands for any text.
[[nodiscard]] bool IsAsExpected(TextView line, TextView expected);

}  // namespace lintara::cli
