// What an editing command tells a person at its end.
#pragma once

#include "cli/options.h"
#include "cli/output/report.h"

#include <string>
#include <string_view>

namespace lintara::cli {

// With --check, a line for each file that would change; then one line on the whole, which begins with `deed`
// ("Numbered"). Ends in a line break.
[[nodiscard]] std::string Summary(const Report& report, std::string_view deed, const EditOptions& edit);

}  // namespace lintara::cli
