// The pair of small arrows: those of the desktop's own box for numbers, without the box. Pressed for long
// they go on counting.
#pragma once

#include "forms/up_down.h"
#include "ui/qt/control_view.h"

#include <QAbstractSpinBox>

namespace lintara::ui {

class ArrowsView final : public QAbstractSpinBox, public ControlView {
  public:
    ArrowsView(QWidget* parent, forms::UpDown& arrows);

    [[nodiscard]] QWidget& Widget() override { return *this; }
    void Update(forms::Property /*property*/) override {}

    void stepBy(int steps) override { arrows_.Step(steps); }

  protected:
    [[nodiscard]] StepEnabled stepEnabled() const override { return StepUpEnabled | StepDownEnabled; }
    void initStyleOption(QStyleOptionSpinBox* option) const override;
    void resizeEvent(QResizeEvent* event) override;

  private:
    forms::UpDown& arrows_;
};

}  // namespace lintara::ui
