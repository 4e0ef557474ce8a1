#include "ui/win32/container_view.h"

#include "ui/win32/window_classes.h"

namespace lintara::ui::win32 {

ContainerView::ContainerView(ViewContext& context, HWND parent, forms::Container& container)
    : ControlView(context, parent, container,
                  {.windowClass = WindowClasses::Surface,
                   .style = WS_CLIPCHILDREN,
                   .extendedStyle = WS_EX_CONTROLPARENT},
                  L""),
      surface_(context, container) {}

void ContainerView::Update(forms::Property property) {
    if (property == forms::Property::Colors) {
        UpdateColors();
    }
}

void ContainerView::UpdateColors() {
    surface_.UpdateColors();
    ::RedrawWindow(Handle(), nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

LRESULT ContainerView::Receive(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto result = surface_.Receive(Handle(), message, wParam, lParam);
    return result ? *result : Default(message, wParam, lParam);
}

}  // namespace lintara::ui::win32
