#ifdef _WIN32

#include "platform/system_screen.h"

#include <windows.h>

namespace lintara::platform {

Result<void> SystemScreen::SetMousePointer(hostmodel::MousePointer pointer) {
    const bool isHourglass = pointer == hostmodel::MousePointer::Hourglass;
    const HCURSOR cursor = ::LoadCursorW(nullptr, isHourglass ? IDC_WAIT : IDC_ARROW);
    if (cursor == nullptr) {
        return Failure(ErrorNumber::HostFailure, "the system has no such mouse pointer");
    }
    ::SetCursor(cursor);
    POINT place{};
    if (!isHourglass && ::GetCursorPos(&place) != 0) {
        // Where the pointer stands now, the window below chooses its own again.
        ::SetCursorPos(place.x, place.y);
    }
    return {};
}

}  // namespace lintara::platform

#endif
