// How "insert" and "remove" tell what they do with handlers and numbers.
#pragma once

#include "cli/edits/edit_run.h"
#include "cli/options.h"

namespace lintara::cli {

// Without an editor, which the command adds.
[[nodiscard]] EditJob InsertionJob(const WorkOptions& work);
[[nodiscard]] EditJob RemovalJob(const WorkOptions& work);

}  // namespace lintara::cli
