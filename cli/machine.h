// What stands behind the library's platform interfaces when the command runs on a real machine.
#pragma once

#include "cli/environment.h"

namespace lintara::cli {

// The user's settings, the clock and the names of this machine. What is wrong with the settings file is told
// as a warning on the environment's standard error, which must outlive it. Nothing is read before it is asked
// for.
void ConnectToMachine(Environment& environment);

}  // namespace lintara::cli
