// The label and the template of error handlers, as the options, the project file and the user's settings give
// them.
#pragma once

#include "cli/edits/handler_block.h"
#include "cli/environment.h"
#include "cli/options.h"
#include "cli/options/option_reader.h"

#include <optional>
#include <string>

namespace lintara::cli {

// Reads the template's file, standard input or a buffer. Refuses, as UsageError, what is no label, and a
// template that could not stand in a procedure; the latter two not when the command is exact.
[[nodiscard]] WantedHandler ReadWantedHandler(const OptionReader& given, Environment& environment);

// What speaks against a template of handlers that begin with that label, as a sentence; none when nothing
// does.
[[nodiscard]] std::optional<std::string> TemplateProblem(TextView code, TextView label);

// Options on the command line that belong to work that is not asked for are usage errors.
void RequireWorkOf(const OptionReader& given, const WorkOptions& work);

}  // namespace lintara::cli
