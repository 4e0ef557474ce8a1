#include "cli/commands/commands.h"
#include "cli/reference/reference.h"

namespace lintara::cli::reference {

Program ThisProgram() {
    return {.description = ProgramDescription(),
            .footer = ProgramFooter(),
            .version = LINTARA_VERSION,
            .commands = Commands(),
            .families = CommandFamilies()};
}

}  // namespace lintara::cli::reference
