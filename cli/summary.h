// What an editing command tells a person at its end.
#pragma once

#include "cli/options.h"
#include "cli/report.h"

#include <string>

namespace lintara::cli {

// With --check, a line for each file that would change; then one line on the whole. Ends in a line break.
[[nodiscard]] std::string Summary(const Report& report, const Options& options);

}  // namespace lintara::cli
