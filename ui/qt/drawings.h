// Lines and shapes have no widgets: the container that they are in paints them, behind its widgets.
#pragma once

#include "forms/container.h"
#include "ui/qt/control_view.h"
#include "ui/qt/scale.h"

#include <QWidget>

namespace lintara::ui {

// Paints the visible lines and shapes of `container` onto its widget, during a paint event of that. They
// begin and end with the dots of the screen, whatever its density.
void PaintDrawings(QWidget& widget, const forms::Container& container, const Scale& scale);

// A frame or user control.
class ContainerView final : public QWidget, public ControlView {
  public:
    ContainerView(QWidget* parent, forms::Container& container, const Scale& scale);

    [[nodiscard]] QWidget& Widget() override { return *this; }
    void Update(forms::Property property) override;
    void UpdateLook() override;

  protected:
    void paintEvent(QPaintEvent* event) override;

  private:
    forms::Container& container_;
    const Scale& scale_;
};

}  // namespace lintara::ui
