// The scroll bars of a box of many lines: there only while its text does not fit, so that they cover nothing
// of one that does.
#pragma once

#include "base/text.h"
#include "ui/win32/windows_headers.h"

namespace lintara::ui::win32 {

// Shows or hides those of `edit` for `text`, which it shows in `font`. Changes the size of its inside.
void ShowNeededBars(HWND edit, TextView text, HFONT font);

}  // namespace lintara::ui::win32
