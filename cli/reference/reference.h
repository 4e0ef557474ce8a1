// Documents that are made from the command table when the program is built: completions for shells and the
// manual page. Each function returns a whole file.
#pragma once

#include "cli/options/command_info.h"

#include <span>
#include <string>
#include <string_view>

namespace lintara::cli::reference {

// What the documents tell of.
struct Program {
    std::string_view description;
    std::string_view footer;
    std::string_view version;
    std::span<const CommandInfo> commands;
    std::span<const CommandFamily> families;
};

// The command `lintara` itself.
[[nodiscard]] Program ThisProgram();

// For bash from 4.0 on, with or without the package of completions.
[[nodiscard]] std::string BashCompletion(const Program& program);
[[nodiscard]] std::string ZshCompletion(const Program& program);
[[nodiscard]] std::string FishCompletion(const Program& program);

// In the man macros, section 1.
[[nodiscard]] std::string ManualPage(const Program& program);

}  // namespace lintara::cli::reference
