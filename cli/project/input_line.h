// Lines as people know them who look at their files: as they were before the command edited them.
#pragma once

#include "base/position.h"
#include "workspace/module.h"

#include <string>

namespace lintara::cli {

// Which line of the input `line` of the edited module is. For an inserted line it is that of the next line
// below that was there before, or else the last one of the input above it.
[[nodiscard]] Line InputLine(const workspace::Module& module, Line line);

// "line 12 (line 30 of the file)", of the input.
[[nodiscard]] std::string InputPlace(const workspace::Module& module, Line line);

}  // namespace lintara::cli
