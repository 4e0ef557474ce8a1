// What only tells something: labels and the bar at the lower edge.
#pragma once

#include "forms/label.h"
#include "forms/status_bar.h"
#include "ui/qt/control_view.h"

#include <QLabel>
#include <QStatusBar>

namespace lintara::ui {

class LabelView final : public QLabel, public ControlView {
  public:
    LabelView(QWidget* parent, forms::Label& label);

    [[nodiscard]] QWidget& Widget() override { return *this; }
    void Update(forms::Property property) override;
    [[nodiscard]] QSize NeededSize() const override;
    [[nodiscard]] QString Caption() const override;

    // The widget that the label's access key leads to: Qt underlines the key only where there is one.
    void SetBuddy(QWidget& buddy);

  private:
    void ShowCaption();

    forms::Label& label_;
};

// Its text is cut short where the bar is too narrow; all of it is told where the mouse rests.
class StatusBarView final : public QStatusBar, public ControlView {
  public:
    StatusBarView(QWidget* parent, forms::StatusBar& bar);

    [[nodiscard]] QWidget& Widget() override { return *this; }
    void Update(forms::Property property) override;
    [[nodiscard]] QSize NeededSize() const override;

  protected:
    void resizeEvent(QResizeEvent* event) override;

  private:
    void ShowText();

    forms::StatusBar& bar_;
    QLabel* text_;
};

}  // namespace lintara::ui
