// What the statements of a line jump to: the labels and numbers behind GoTo, GoSub, Resume and On ... GoTo,
// and the numbers behind Then and Else.
#pragma once

#include "base/text.h"

#include <vector>

namespace lintara::cli {

// In their order, as the code writes them. `code` is one logical line without its comment; text between
// quotes jumps nowhere. The words of "Resume Next" and of "On Error GoTo 0" are among them.
[[nodiscard]] std::vector<TextView> JumpTargetsIn(TextView code);

}  // namespace lintara::cli
