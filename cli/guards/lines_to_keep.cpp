#include "cli/guards/lines_to_keep.h"

#include "transform/line_numbers.h"
#include "transform/line_text.h"
#include "workspace/syntax.h"

#include <algorithm>

namespace lintara::cli {
namespace {

constexpr TextView NumberColumn = u"       ";
static_assert(NumberColumn.size() == transform::NumberColumnWidth);

// Whether removal may take something off a line that has this label.
bool HasWidthBehindLabel(TextView line, TextView label) {
    return line.substr(label.size() + 1).starts_with(NumberColumn);
}

bool IsBlanksOnly(TextView line) {
    return line.find_first_not_of(u' ') == TextView::npos;
}

}  // namespace

std::size_t FirstLineBeyondLimit(std::span<const Text> lines, std::span<const NumberedLine> numbered) {
    if (numbered.size() < 2) {
        return lines.size();
    }
    // The first two numbers tell the step, unless lines were moved since; then there is nothing to tell.
    const auto distance = static_cast<std::int64_t>(numbered[1].index - numbered[0].index);
    const std::int64_t difference = std::int64_t{numbered[1].number} - numbered[0].number;
    if (difference < distance || difference % distance != 0) {
        return lines.size();
    }
    const std::int64_t step = difference / distance;
    const std::int64_t limit = (transform::NumberOffsetLimit + step - 1) / step;
    return std::min(lines.size(), std::max(static_cast<std::size_t>(limit), numbered.back().index + 1));
}

void FindLinesToKeep(std::span<const Text> lines, std::span<const NumberedLine> numbered,
                     std::vector<std::size_t>& indexes) {
    indexes.clear();
    const std::size_t beyond = FirstLineBeyondLimit(lines, numbered);
    auto nextNumbered = numbered.begin();
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (nextNumbered != numbered.end() && nextNumbered->index == i) {
            ++nextNumbered;
            continue;
        }
        const TextView line = lines[i];
        const transform::LineLabel label = transform::GetLineLabel(line);
        if (label.isLabel) {
            // A numeric label that is none of the numbered lines stands on a continuation line.
            if (transform::IsNumericLabel(label.label) || HasWidthBehindLabel(line, label.label)) {
                indexes.push_back(i);
            }
        } else if (line.starts_with(NumberColumn) && (i >= beyond || IsBlanksOnly(line))) {
            indexes.push_back(i);
        }
    }
}

}  // namespace lintara::cli
