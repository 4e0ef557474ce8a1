// What the command's exit status tells a script.
#pragma once

namespace lintara::cli {

enum class ExitStatus : int {
    Done = 0,
    ChangesFound = 1,   // --check: something would change
    NotFound = 1,       // what was looked up is not there, or what was checked is not as wanted
    Cancelled = 1,      // the user closed a window without a choice
    Usage = 2,          // an option, or a name that the project does not have
    Failed = 3,         // the project could not be read or written
    Skipped = 4,        // --strict: some procedures were skipped
    InternalFault = 5,  // what an edit left is not what it was to leave; nothing was written
};

}  // namespace lintara::cli
