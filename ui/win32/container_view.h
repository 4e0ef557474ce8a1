// A frame or a user control.
#pragma once

#include "forms/container.h"
#include "ui/win32/control_view.h"
#include "ui/win32/surface.h"

namespace lintara::ui::win32 {

class ContainerView final : public ControlView {
  public:
    ContainerView(ViewContext& context, HWND parent, forms::Container& container);

    void Update(forms::Property property) override;

    // The desktop's colours are others now.
    void UpdateColors();

  protected:
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    Surface surface_;
};

}  // namespace lintara::ui::win32
