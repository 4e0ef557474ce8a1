// The subcommands. Each runs to its end and returns the exit status.
#pragma once

#include "cli/exit_status.h"
#include "cli/options.h"
#include "cli/streams.h"

namespace lintara::cli {

// insert and remove
ExitStatus RunEditCommand(const Options& options, Streams& streams);

ExitStatus RunListCommand(const Options& options, Streams& streams);
ExitStatus RunMemberCommand(const Options& options, Streams& streams);
ExitStatus RunRecoverCommand(const Options& options, Streams& streams);

}  // namespace lintara::cli
