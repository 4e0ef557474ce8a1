#include "ui/win32/dpi.h"

#include "ui/win32/handles.h"
#include "ui/win32/system_function.h"

namespace lintara::ui::win32 {

int DpiOf(HWND window) {
    using GetDpiForWindow = UINT(WINAPI*)(HWND);
    if (const auto dpiOf = FindSystemFunction<GetDpiForWindow>(L"user32.dll", "GetDpiForWindow")) {
        if (const UINT dpi = window == nullptr ? 0 : dpiOf(window); dpi != 0) {
            return static_cast<int>(dpi);
        }
    }
    return ::GetDeviceCaps(WindowDc(nullptr).get(), LOGPIXELSX);
}

RECT WithFrame(SIZE inside, DWORD style, DWORD extendedStyle, int dpi) {
    using AdjustForDpi = BOOL(WINAPI*)(RECT*, DWORD, BOOL, DWORD, UINT);
    RECT frame{0, 0, inside.cx, inside.cy};
    if (const auto adjust = FindSystemFunction<AdjustForDpi>(L"user32.dll", "AdjustWindowRectExForDpi")) {
        adjust(&frame, style, FALSE, extendedStyle, static_cast<UINT>(dpi));
    } else {
        ::AdjustWindowRectEx(&frame, style, FALSE, extendedStyle);
    }
    return frame;
}

}  // namespace lintara::ui::win32
