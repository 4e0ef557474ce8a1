// Keys by the numbers that forms know them by, those of the platform they were designed for.
#pragma once

#include <cstdint>

class QKeyEvent;

namespace lintara::ui {

// The code of the key: letters and digits have that of the capital letter or digit. 0 for a key without one.
[[nodiscard]] std::int16_t KeyCodeOf(const QKeyEvent& event);

// Which of Shift, Ctrl and Alt are held; see forms::shift.
[[nodiscard]] std::int16_t HeldKeysOf(const QKeyEvent& event);

}  // namespace lintara::ui
