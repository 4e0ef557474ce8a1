// The course of `lintara history`: shows where the user has been in a project, and goes where the user wants.
#pragma once

#include "cli/environment.h"
#include "cli/exit_status.h"
#include "cli/options/option_reader.h"

namespace lintara::cli {

// Prints the chosen place as "file:line"; with --print, the lists as JSON, and shows no window.
[[nodiscard]] ExitStatus RunHistory(const OptionReader& given, Environment& environment);

}  // namespace lintara::cli
