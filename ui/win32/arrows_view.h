// The pair of small arrows. Pressed for long they go on counting.
#pragma once

#include "forms/up_down.h"
#include "ui/win32/control_view.h"

namespace lintara::ui::win32 {

class ArrowsView final : public ControlView {
  public:
    ArrowsView(ViewContext& context, HWND parent, forms::UpDown& arrows);

    void Update(forms::Property /*property*/) override {}
    LRESULT Notify(NMHDR& header) override;

  private:
    forms::UpDown& arrows_;
};

}  // namespace lintara::ui::win32
