// A text box of many lines.
#pragma once

#include "ui/qt/text_box_view.h"

#include <QPlainTextEdit>

namespace lintara::ui {

class PageBox final : public QPlainTextEdit, public TextBoxView {
  public:
    PageBox(QWidget* parent, forms::TextBox& box, MirrorGate& gate);

    [[nodiscard]] QWidget& Widget() override { return *this; }

  protected:
    bool event(QEvent* event) override;
    bool viewportEvent(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;

    [[nodiscard]] QString WidgetText() const override;
    [[nodiscard]] Selection WidgetSelection() const override;
    void ChangeWidget(const Difference& difference) override;
    void SelectInWidget(const Selection& selection) override;
};

}  // namespace lintara::ui
