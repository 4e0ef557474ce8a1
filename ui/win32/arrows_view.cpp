#include "ui/win32/arrows_view.h"

namespace lintara::ui::win32 {

// The number is the form's affair: the system's control stands in the middle of a range of its own, from
// which it never moves.
ArrowsView::ArrowsView(ViewContext& context, HWND parent, forms::UpDown& arrows)
    : ControlView(context, parent, arrows, {.windowClass = UPDOWN_CLASSW, .style = 0}, L""), arrows_(arrows) {
    Send(UDM_SETRANGE32, static_cast<WPARAM>(-100), 100);
    Send(UDM_SETPOS32, 0, 0);
    UDACCEL oneByOne{.nSec = 0, .nInc = 1};
    Send(UDM_SETACCEL, 1, reinterpret_cast<LPARAM>(&oneByOne));
}

LRESULT ArrowsView::Notify(NMHDR& header) {
    constexpr LRESULT stay = TRUE;
    if (header.code != UDN_DELTAPOS) {
        return 0;
    }
    arrows_.Step(reinterpret_cast<const NMUPDOWN&>(header).iDelta);
    return stay;
}

}  // namespace lintara::ui::win32
