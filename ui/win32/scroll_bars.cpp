#include "ui/win32/scroll_bars.h"

#include "platform/wide_text.h"
#include "ui/win32/handles.h"

#include <algorithm>
#include <string>

namespace lintara::ui::win32 {
namespace {

// Longer texts need the bars anyway, and take long to measure.
constexpr std::size_t longestMeasured = 20000;

SIZE SizeOf(TextView text, HFONT font) {
    const WindowDc dc(nullptr);
    const Selected selected(dc.get(), font);
    TEXTMETRICW metrics{};
    ::GetTextMetricsW(dc.get(), &metrics);
    const std::wstring wide = platform::ToWide(text);
    SIZE size{};
    for (std::size_t start = 0; start <= wide.size();) {
        const std::size_t end = std::min(wide.find(L"\r\n", start), wide.size());
        const DWORD extent =
            ::GetTabbedTextExtentW(dc.get(), wide.data() + start, static_cast<int>(end - start), 0, nullptr);
        size.cx = std::max<LONG>(size.cx, LOWORD(extent));
        size.cy += metrics.tmHeight;
        start = end + 2;
    }
    // Where the caret stands behind the longest line.
    size.cx += metrics.tmAveCharWidth;
    return size;
}

bool HasBar(HWND edit, LONG_PTR style) {
    return (::GetWindowLongPtrW(edit, GWL_STYLE) & style) != 0;
}

// The inside of the box without bars, and without the margins beside its text.
SIZE RoomOf(HWND edit) {
    RECT inside{};
    ::GetClientRect(edit, &inside);
    const auto margins = static_cast<DWORD>(::SendMessageW(edit, EM_GETMARGINS, 0, 0));
    const int vertical = HasBar(edit, WS_VSCROLL) ? ::GetSystemMetrics(SM_CXVSCROLL) : 0;
    const int horizontal = HasBar(edit, WS_HSCROLL) ? ::GetSystemMetrics(SM_CYHSCROLL) : 0;
    return {inside.right + vertical - LOWORD(margins) - HIWORD(margins) - 2, inside.bottom + horizontal - 2};
}

void Show(HWND edit, int bar, LONG_PTR style, bool isNeeded) {
    if (isNeeded == HasBar(edit, style)) {
        return;
    }
    if (!isNeeded && bar == SB_HORZ) {
        ::SendMessageW(edit, WM_HSCROLL, SB_LEFT, 0);
    }
    ::ShowScrollBar(edit, bar, isNeeded ? TRUE : FALSE);
}

}  // namespace

void ShowNeededBars(HWND edit, TextView text, HFONT font) {
    const bool isLong = text.size() > longestMeasured;
    const SIZE room = RoomOf(edit);
    const SIZE size = isLong ? SIZE{} : SizeOf(text, font);
    const auto needsVertical = [&](bool hasHorizontal) {
        return isLong || size.cy > room.cy - (hasHorizontal ? ::GetSystemMetrics(SM_CYHSCROLL) : 0);
    };
    // Either bar takes room from what the other one serves.
    bool vertical = needsVertical(false);
    const bool horizontal = isLong || size.cx > room.cx - (vertical ? ::GetSystemMetrics(SM_CXVSCROLL) : 0);
    vertical = needsVertical(horizontal);
    Show(edit, SB_VERT, WS_VSCROLL, vertical);
    Show(edit, SB_HORZ, WS_HSCROLL, horizontal);
}

}  // namespace lintara::ui::win32
