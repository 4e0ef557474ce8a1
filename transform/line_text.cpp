#include "transform/line_text.h"

#include "base/runtime.h"

namespace lintara::transform {
namespace {

// How much of a line StripComment leaves: counted from the line's end, not up to the apostrophe. Which
// closing lines are recognised depends on it.
std::int32_t LengthWithoutComment(TextView line, std::int32_t apostrophe) {
    return Len(line) - apostrophe - 1;
}

}  // namespace

Result<TextView> StripComment(TextView line) {
    const std::int32_t apostrophe = InStr(line, u"'");
    if (apostrophe == 0) {
        return line;
    }
    if (Len(line) == 1) {
        return TextView();
    }
    return Then(Left(line, LengthWithoutComment(line, apostrophe)),
                [](TextView kept) -> Result<TextView> { return RTrim(kept); });
}

LineLabel GetLineLabel(TextView line) {
    // Indented lines are the most frequent ones, and never labels.
    if (line.starts_with(u' ')) {
        return {};
    }
    const auto end = line.find_first_of(u" :");
    if (end == TextView::npos || line[end] == u' ') {
        return {};
    }
    return {line.substr(0, end), true};
}

bool IsNumericLabel(TextView label) {
    return IsNumeric(label);
}

TextView StripLineLabel(TextView line) {
    const auto colon = line.find(u':');
    if (colon == TextView::npos || colon + 1 == line.size() || line[colon + 1] != u' ') {
        return line;
    }
    return LTrim(line.substr(colon + 1));
}

}  // namespace lintara::transform
