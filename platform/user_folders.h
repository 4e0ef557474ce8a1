// Where a user's settings lie, and what programs remember for the user.
#pragma once

#include "base/text.h"

#include <filesystem>

namespace lintara::platform {

// The folder for the settings of all programs: XDG_CONFIG_HOME where it names one from the root on, else
// .config below HOME, else below the home folder that the system knows. Empty when there is none.
[[nodiscard]] std::filesystem::path UserConfigFolder();

// The folder for what programs remember from run to run and nobody would miss for long: XDG_STATE_HOME, else
// .local/state below the home folder. Empty when there is none.
[[nodiscard]] std::filesystem::path UserStateFolder();

// The name of an application's folder: the application's own, with everything that could lead elsewhere, or
// that a file name cannot hold, written as %XX. Different names give different folders.
[[nodiscard]] std::string ApplicationFolderName(TextView application);

}  // namespace lintara::platform
