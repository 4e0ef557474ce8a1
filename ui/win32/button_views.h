// What the user clicks. None of these system controls changes by itself: the form's control says what becomes
// of a click.
#pragma once

#include "forms/buttons.h"
#include "ui/win32/control_view.h"

namespace lintara::ui::win32 {

class PushButtonView final : public ControlView {
  public:
    PushButtonView(ViewContext& context, HWND parent, forms::CommandButton& button);

    void Update(forms::Property /*property*/) override {}
    [[nodiscard]] SIZE NeededSize() const override;
    void Command(WORD code) override;

    // Draws it as the button that Enter presses, or as any other.
    void ShowAsDefault(bool isDefault);

  private:
    forms::CommandButton& button_;
};

class CheckBoxView final : public ControlView {
  public:
    CheckBoxView(ViewContext& context, HWND parent, forms::CheckBox& box);

    void Update(forms::Property property) override;
    [[nodiscard]] SIZE NeededSize() const override;
    void Command(WORD code) override;

  private:
    forms::CheckBox& box_;
};

class OptionButtonView final : public ControlView {
  public:
    OptionButtonView(ViewContext& context, HWND parent, forms::OptionButton& option);

    void Update(forms::Property property) override;
    [[nodiscard]] SIZE NeededSize() const override;
    void Command(WORD code) override;

  protected:
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    [[nodiscard]] bool TakeArrow(WPARAM key);

    forms::OptionButton& option_;
    bool isGettingFocus_ = false;
};

}  // namespace lintara::ui::win32
