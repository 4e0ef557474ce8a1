// The fonts of forms on this desktop.
#pragma once

#include "forms/font.h"

#include <QFont>

namespace lintara::ui {

// The family that the form asks for where there is one, else a similar one: the desktop's own for text, a
// typewriter font for code. The size is the desktop's, larger or smaller as the form has it compared with its
// ordinary text.
[[nodiscard]] QFont DesktopFont(const forms::Font& font);

}  // namespace lintara::ui
