// The density of the screen that a window is on, in dots per inch. Systems that know only one for all screens
// answer with that; a process that has not asked to see densities is told 96 everywhere.
#pragma once

#include "ui/win32/windows_headers.h"

namespace lintara::ui::win32 {

inline constexpr int DesignedDpi = 96;

// The message that tells a window of its new density, which older headers do not name.
inline constexpr UINT DpiChangedMessage = 0x02E0;

// That of the window's screen; that of the system for a null window.
[[nodiscard]] int DpiOf(HWND window);

// The whole window around an inside of that size at the origin.
[[nodiscard]] RECT WithFrame(SIZE inside, DWORD style, DWORD extendedStyle, int dpi);

}  // namespace lintara::ui::win32
