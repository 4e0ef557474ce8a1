// What the walkers of a procedure's body look at in one physical line: its comment and its label. The rules
// are those that existing projects were edited by, so each odd one is kept on purpose. A blank is U+0020.
//
// What is returned is a view of the line that was handed in.
#pragma once

#include "base/result.h"
#include "base/text.h"

namespace lintara::transform {

// The line without its comment, cut as the closing lines of procedures are recognised: from the first
// apostrophe, wherever it stands, counts only how far it is from the start, and so many characters and one
// more go from the line's end; then trailing blanks go. "End Sub  ' comment" gives "End Sub", but
// "End Sub ' done" gives "End". Without an apostrophe the line stays as it is. Fails when more than the whole
// line would go.
[[nodiscard]] Result<TextView> StripComment(TextView line);

struct LineLabel {
    TextView label;        // without its colon; "" when there is none
    bool isLabel = false;  // a label may be "", on a line that begins with a colon

    friend bool operator==(const LineLabel&, const LineLabel&) = default;
};

// What stands in front of the first colon, if it holds no blank. So an indented line has no label, and
// "x=1:y=2" has the label "x=1".
[[nodiscard]] LineLabel GetLineLabel(TextView line);

// Whether the label is a line number, by the runtime's test for numbers.
[[nodiscard]] bool IsNumericLabel(TextView label);

// What follows the first colon, inside quotes too, and the blanks behind it; the line as it is when no blank
// follows that colon.
[[nodiscard]] TextView StripLineLabel(TextView line);

}  // namespace lintara::transform
