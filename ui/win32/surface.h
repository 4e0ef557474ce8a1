// What a window does for the controls that stand in it, be it the window of a form, of a frame or of a user
// control: it hands on what they tell, gives them their backgrounds, and paints lines and shapes.
#pragma once

#include "forms/container.h"
#include "ui/win32/handles.h"
#include "ui/win32/view_context.h"

#include <optional>

namespace lintara::ui::win32 {

class Surface {
  public:
    Surface(ViewContext& context, const forms::Container& container)
        : context_(context), container_(container) {}

    // The message's result; nothing when the message is not the surface's.
    [[nodiscard]] std::optional<LRESULT> Receive(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    // The container's colour, or the desktop's colours, are others now.
    void UpdateColors() { background_.reset(); }

  private:
    [[nodiscard]] ControlView* ViewOf(HWND child) const;
    [[nodiscard]] HBRUSH Background();
    [[nodiscard]] LRESULT BackgroundOf(HWND child, HDC dc);
    void Paint(HWND window, HDC dc) const;

    ViewContext& context_;
    const forms::Container& container_;
    UniqueBrush background_;
};

}  // namespace lintara::ui::win32
