// What --help says beyond the list of options: examples, what the scopes mean, the exit statuses.
#pragma once

#include "cli/options.h"

#include <string_view>

namespace lintara::cli {

[[nodiscard]] std::string_view ProgramDescription();
[[nodiscard]] std::string_view ProgramFooter();

[[nodiscard]] std::string_view VerbName(Verb verb);
[[nodiscard]] std::string_view VerbDescription(Verb verb);
[[nodiscard]] std::string_view VerbFooter(Verb verb);

}  // namespace lintara::cli
