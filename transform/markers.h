// Finds the marker lines that inserted code begins and ends with.
#pragma once

#include "base/position.h"
#include "base/result.h"
#include "base/text.h"
#include "transform/walks.h"

#include <optional>

namespace lintara::transform {

// The first line from `start` up to, not including, `end` that holds `marker`, as a part of a line too and in
// any letter case; none when the module was not reached or its search fails. When `end` is not greater than
// `start`, as in a procedure with an empty body, the host searches to the end of the module.
[[nodiscard]] std::optional<Line> FindMarker(const Result<CodeModulePtr>& codeModule, TextView marker,
                                             Line start, Line end);

}  // namespace lintara::transform
