// The lines of a module that the IDE keeps and never shows, such as the attributes of members.
#pragma once

#include "base/position.h"
#include "workspace/module.h"

namespace lintara::cli {

// Whether hidden lines stand among `lines`, which must have been in the input, as the line behind them was.
[[nodiscard]] bool HoldsHiddenLines(const workspace::Module& module, LineRange lines);

}  // namespace lintara::cli
