// What lies below the command line: the project file, and below that the user's settings. Laid there between
// parsing a command line and running its command.
#pragma once

#include "cli/environment.h"
#include "cli/options/option_reader.h"
#include "cli/options/project_file.h"

#include <optional>

namespace lintara::cli {

// The file that applies to the run: the one that --config names, else the nearest one beside or above the
// project. None with --no-config, and for commands that read no project. Throws as ReadProjectFile does.
[[nodiscard]] std::optional<ProjectFile> ProjectFileOf(const OptionReader& given);

// The run with all that was given to it anywhere. A user's setting that cannot be read is a warning on
// standard error, and counts as not given.
[[nodiscard]] OptionReader WithLayers(const OptionReader& given, Environment& environment);

}  // namespace lintara::cli
