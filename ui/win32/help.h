// Help files: those of the present kind, ".chm", and those of the old kind.
#pragma once

#include "base/text.h"

#include <cstdint>

namespace lintara::ui::win32 {

// Shows the topic with the number `context`, in a window of its own that stays when this returns. False when
// there is no such file or the system cannot show it.
[[nodiscard]] bool OpenHelp(TextView file, std::int32_t context);

}  // namespace lintara::ui::win32
