// The course of `lintara dialog`: plays the host's part around one of the parameter dialogs.
#pragma once

#include "cli/dialog/dialog_kinds.h"
#include "cli/environment.h"
#include "cli/exit_status.h"
#include "cli/options/option_reader.h"

namespace lintara::cli {

// Asks the library what is at the caret of --at, shows the dialog, and runs the command that the user's
// choice stands for with the options of `given` that it shares; with --print, prints the choice instead.
// Throws UsageError for a choice that the command refuses.
[[nodiscard]] ExitStatus RunDialog(const DialogKind& kind, const OptionReader& given,
                                   Environment& environment);

}  // namespace lintara::cli
