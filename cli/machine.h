// What stands behind the library's platform interfaces when the command runs on a real machine.
#pragma once

#include "cli/environment.h"

namespace lintara::cli {

// The user's settings, the clock, the names of this machine, the database engine, and the person at the
// terminal, if any. What is wrong with the settings file, and that a database could not be written, is told
// as a warning on the environment's standard error; its streams must outlive it. Nothing is read before it is
// asked for.
void ConnectToMachine(Environment& environment);

}  // namespace lintara::cli
