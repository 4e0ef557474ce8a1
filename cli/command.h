// The command `lintara` as a function, so that tests can run it in process.
#pragma once

#include "cli/environment.h"
#include "cli/exit_status.h"

#include <span>
#include <string>

namespace lintara::cli {

// Adds to an environment what only a command needs.
using Connect = void (*)(Environment& environment);

// Runs one command line, without the program's name. Whatever goes wrong is told on standard
// error. `connect` is called once it is clear that there is a command to run.
ExitStatus Run(
    std::span<const std::string> arguments, Environment& environment, Connect connect = [](Environment&) {});

// The same over this process's own streams and this machine.
int Main(int argc, char** argv);

}  // namespace lintara::cli
