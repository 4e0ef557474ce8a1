// What only tells something: labels and the bar at the lower edge.
#pragma once

#include "forms/label.h"
#include "forms/status_bar.h"
#include "ui/win32/control_view.h"

namespace lintara::ui::win32 {

class LabelView final : public ControlView {
  public:
    LabelView(ViewContext& context, HWND parent, forms::Label& label);

    void Update(forms::Property property) override;
    [[nodiscard]] SIZE NeededSize() const override;

  private:
    forms::Label& label_;
};

class StatusBarView final : public ControlView {
  public:
    StatusBarView(ViewContext& context, HWND parent, forms::StatusBar& bar);

    void Update(forms::Property property) override;
    [[nodiscard]] SIZE NeededSize() const override;

  private:
    forms::StatusBar& bar_;
};

}  // namespace lintara::ui::win32
