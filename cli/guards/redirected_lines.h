// The statements "On Error GoTo ..." that the insertion of a handler leads to its label, and that the removal
// leads away from it again. The library replaces their text wherever it finds it; here is told what the lines
// must be afterwards: only code changes, no comment and no text between quotes.
#pragma once

#include "base/text.h"

#include <cstddef>
#include <optional>
#include <span>
#include <vector>

namespace lintara::cli {

struct RedirectedLine {
    std::size_t index = 0;
    Text text;  // as it must be after the library's work
};

// The lines among `lines` that hold "On Error GoTo " with the target `from`, in code or elsewhere, when the
// target becomes `to`.
[[nodiscard]] std::vector<RedirectedLine> RedirectLines(std::span<const Text> lines, TextView from,
                                                        TextView to);

// The first line with such a statement whose target is longer and only begins like `target`: the library
// would replace its beginning.
[[nodiscard]] std::optional<std::size_t> FindLongerTarget(std::span<const Text> lines, TextView target);

// The first line of a statement that leads errors to a label other than `label`: also "On Local Error GoTo",
// and one of several lines. `lines` begin and end with whole logical lines.
[[nodiscard]] std::optional<std::size_t> FindOtherTarget(std::span<const Text> lines, TextView label);

}  // namespace lintara::cli
