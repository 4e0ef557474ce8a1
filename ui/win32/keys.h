// Keys by the numbers that forms know them by, which are the system's own.
#pragma once

#include <cstdint>

namespace lintara::ui::win32 {

// Which of Shift, Ctrl and Alt are held while the present message is served; see forms::shift.
[[nodiscard]] std::int16_t HeldKeys();

}  // namespace lintara::ui::win32
