// What the user clicks. Qt has changed the widget when its signal comes; it then shows what became of that in
// the control.
#pragma once

#include "forms/buttons.h"
#include "ui/qt/control_view.h"

#include <QCheckBox>
#include <QPushButton>
#include <QRadioButton>

namespace lintara::ui {

class PushButtonView final : public QPushButton, public ControlView {
  public:
    PushButtonView(QWidget* parent, forms::CommandButton& button);

    [[nodiscard]] QWidget& Widget() override { return *this; }
    void Update(forms::Property property) override;
    [[nodiscard]] QSize NeededSize() const override;
    [[nodiscard]] QString Caption() const override;

  private:
    forms::CommandButton& button_;
};

class CheckBoxView final : public QCheckBox, public ControlView {
  public:
    CheckBoxView(QWidget* parent, forms::CheckBox& box, MirrorGate& gate);

    [[nodiscard]] QWidget& Widget() override { return *this; }
    void Update(forms::Property property) override;
    [[nodiscard]] QSize NeededSize() const override;
    [[nodiscard]] QString Caption() const override;

  private:
    void ShowValue();

    forms::CheckBox& box_;
    MirrorGate& gate_;
};

class RadioButtonView final : public QRadioButton, public ControlView {
  public:
    RadioButtonView(QWidget* parent, forms::OptionButton& option, MirrorGate& gate);

    [[nodiscard]] QWidget& Widget() override { return *this; }
    void Update(forms::Property property) override;
    [[nodiscard]] QSize NeededSize() const override;
    [[nodiscard]] QString Caption() const override;

  private:
    void ShowValue();
    void ShowNeighbours();

    forms::OptionButton& option_;
    MirrorGate& gate_;
};

}  // namespace lintara::ui
