// Goes through windows.
#pragma once

#include "ui/win32/windows_headers.h"

#include <functional>

namespace lintara::ui::win32 {

using WindowVisitor = std::function<void(HWND)>;

inline BOOL CALLBACK VisitWindow(HWND window, LPARAM visitor) {
    (*reinterpret_cast<const WindowVisitor*>(visitor))(window);
    return TRUE;
}

// The windows of this thread that stand in no other.
inline void EachWindow(const WindowVisitor& visitor) {
    ::EnumThreadWindows(::GetCurrentThreadId(), &VisitWindow, reinterpret_cast<LPARAM>(&visitor));
}

// All windows inside another.
inline void EachWindowIn(HWND window, const WindowVisitor& visitor) {
    ::EnumChildWindows(window, &VisitWindow, reinterpret_cast<LPARAM>(&visitor));
}

}  // namespace lintara::ui::win32
