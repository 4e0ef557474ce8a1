// A text box of one line.
#pragma once

#include "ui/qt/text_box_view.h"

#include <QLineEdit>

namespace lintara::forms {
class UpDown;
}

namespace lintara::ui {

class LineBox final : public QLineEdit, public TextBoxView {
  public:
    LineBox(QWidget* parent, forms::TextBox& box, MirrorGate& gate);

    [[nodiscard]] QWidget& Widget() override { return *this; }
    [[nodiscard]] QSize NeededSize() const override;

    // The arrows that count its number: the keys Up and Down and the wheel do so as well.
    void SetArrows(forms::UpDown& arrows) { arrows_ = &arrows; }

  protected:
    bool event(QEvent* event) override;
    void focusInEvent(QFocusEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

    [[nodiscard]] QString WidgetText() const override;
    [[nodiscard]] Selection WidgetSelection() const override;
    void ChangeWidget(const Difference& difference) override;
    void SelectInWidget(const Selection& selection) override;

  private:
    [[nodiscard]] bool StepBy(int steps);

    forms::UpDown* arrows_ = nullptr;
    int wheelAngle_ = 0;
};

}  // namespace lintara::ui
