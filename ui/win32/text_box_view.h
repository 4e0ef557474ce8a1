// A text box of one line or of many.
//
// The user's work reaches the form's control when the system's has finished with the message that brought it,
// whatever it went through meanwhile, so that a keystroke or a paste is one change. What the form writes into
// the box is written as the piece that differs, so the user can undo it.
#pragma once

#include "forms/text_box.h"
#include "forms/up_down.h"
#include "ui/win32/control_view.h"

namespace lintara::ui::win32 {

class TextBoxView final : public ControlView {
  public:
    TextBoxView(ViewContext& context, HWND parent, forms::TextBox& box);

    void Update(forms::Property property) override;
    [[nodiscard]] SIZE NeededSize() const override;
    void Command(WORD code) override;
    [[nodiscard]] bool LiesOnShape() const override { return !box_.bordered; }
    [[nodiscard]] RECT PlaceIn(const RECT& given) const override;

    // The arrows that count its number: the keys Up and Down and the wheel do so as well.
    void SetArrows(forms::UpDown& arrows) { arrows_ = &arrows; }

    void FontChanged() override;

  protected:
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam) override;

  private:
    struct Selection {
        DWORD start = 0;
        DWORD end = 0;

        friend bool operator==(const Selection&, const Selection&) = default;
    };

    [[nodiscard]] Text WindowText() const;
    [[nodiscard]] Selection WindowSelection() const;
    [[nodiscard]] Selection BoxSelection() const;

    [[nodiscard]] bool TakeKey(WPARAM key);
    [[nodiscard]] bool TakeCharacter(WPARAM character);
    [[nodiscard]] bool TakeWheel(WPARAM wParam);
    void TakeFromWindow();
    void ShowInWindow();
    void ArrangeBars();

    forms::TextBox& box_;
    forms::UpDown* arrows_ = nullptr;
    int depth_ = 0;
    bool hasChanged_ = false;
    bool isTaking_ = false;
    bool isArranging_ = false;
    int wheel_ = 0;
};

}  // namespace lintara::ui::win32
