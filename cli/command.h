// The command `lintara` as a function, so that tests can run it in process.
#pragma once

#include "cli/exit_status.h"
#include "cli/streams.h"

#include <span>
#include <string>

namespace lintara::cli {

// Runs one command line, without the program's name. Whatever goes wrong is told on `streams.err`.
ExitStatus Run(std::span<const std::string> arguments, Streams& streams);

// The same over this process's own streams.
int Main(int argc, char** argv);

}  // namespace lintara::cli
