// The course of `lintara serve`: lines in, answers out, until the input ends or nobody reads the answers.
#pragma once

#include "cli/environment.h"
#include "cli/exit_status.h"

#include <cstddef>
#include <filesystem>
#include <vector>

namespace lintara::cli {

struct ServeOptions {
    bool isolated = false;                              // settings and code database in memory
    std::vector<std::filesystem::path> allowedOutside;  // folders besides the projects' that may be written
    std::size_t longestLine = std::size_t{256} * 1024 * 1024;
};

ExitStatus RunServe(const ServeOptions& options, Environment& environment);

}  // namespace lintara::cli
