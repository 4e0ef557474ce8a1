// Whether the lines between a header and its closing line are the body of that one procedure, whatever is
// compiled: under #If and #Else several headers may share one body, or a body may reach out of its branch.
#pragma once

#include "base/position.h"
#include "base/text.h"
#include "cli/guards/range_guard.h"
#include "workspace/module.h"

#include <optional>
#include <span>

namespace lintara::cli {

// A line of a body that is a header, or a directive whose counterpart stands outside. `body` are the lines of
// the module from `first` on.
[[nodiscard]] std::optional<RangeMismatch> FindForeignLine(std::span<const Text> body, Line first,
                                                           const workspace::Module& module);

}  // namespace lintara::cli
