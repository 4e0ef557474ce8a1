// Whether the lines between a header and its closing line are the body of that one procedure, whatever is
// compiled: under #If and #Else several headers may share one body, or a body may reach out of its branch.
#pragma once

#include "base/position.h"
#include "cli/guards/range_guard.h"
#include "workspace/module.h"

#include <optional>

namespace lintara::cli {

// A line of `body` that is a header, or a directive whose counterpart stands outside.
[[nodiscard]] std::optional<RangeMismatch> FindForeignLine(const LineRange& body,
                                                           const workspace::Module& module);

}  // namespace lintara::cli
