// The command line of one run, as far as it can be read without doing anything: which command, and what was
// given to it.
#pragma once

#include "cli/exit_status.h"
#include "cli/options/command_info.h"
#include "cli/options/option_reader.h"

#include <expected>
#include <span>
#include <string>

namespace lintara::cli {

// A command line that ends the run at once: help or the version on standard output, or a complaint on
// standard error.
struct EarlyExit {
    ExitStatus status = ExitStatus::Usage;
    std::string out;
    std::string err;
};

// `arguments` are those behind the program's name.
[[nodiscard]] std::expected<OptionReader, EarlyExit> ParseCommandLine(std::span<const std::string> arguments);

// What is said about a run of `command` that ends in a usage error.
[[nodiscard]] std::string Complaint(const CommandInfo& command, const std::string& what);

}  // namespace lintara::cli
