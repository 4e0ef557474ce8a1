// A text box of one line or of many. Lines are separated by "\r\n"; positions count UTF-16 code units from 0.
#pragma once

#include "forms/control.h"
#include "forms/event.h"

#include <cstdint>

namespace lintara::forms {

// The keys that are held down with another one, added up.
namespace shift {
inline constexpr std::int16_t Shift = 1;
inline constexpr std::int16_t Ctrl = 2;
inline constexpr std::int16_t Alt = 4;
}  // namespace shift

class TextBox final : public Control {
  public:
    enum class Lines { One, Many };

    TextBox(Container& container, TextView name, const Rect& place, TextView text, Lines lines = Lines::One)
        : Control(container, name, place), text_(text), lines_(lines) {}

    void Accept(ControlVisitor& visitor) override;
    [[nodiscard]] bool TakesFocus() const override { return true; }

    [[nodiscard]] bool IsMultiLine() const { return lines_ == Lines::Many; }
    // Whether a border is drawn around it; not where it stands on a shape.
    bool bordered = true;

    // A new text puts the caret in front of it and raises Change.
    [[nodiscard]] const Text& Contents() const { return text_; }
    void SetContents(TextView text);

    // The selection; the caret where its length is 0. What lies behind the text is cut off; a negative value
    // counts as 0.
    [[nodiscard]] std::int32_t SelStart() const { return selStart_; }
    [[nodiscard]] std::int32_t SelLength() const { return selLength_; }
    void Select(std::int32_t start, std::int32_t length);
    void SelectAll();
    [[nodiscard]] Text SelText() const;
    // Puts `replacement` in the place of the selection, or at the caret, and the caret behind it.
    void SetSelText(TextView replacement);

    Event<> Change;
    Event<> GotFocus;
    // The key's code and the keys held with it. The text box receives the key afterwards.
    Event<std::int16_t, std::int16_t> KeyDown;

    // The user has changed the text, or the selection. Ignored when the box is not usable.
    void Edit(TextView text, std::int32_t selStart, std::int32_t selLength);
    // The user types `text`, which replaces the selection.
    void Type(TextView text);

  protected:
    void FocusGained() override { GotFocus.Raise(); }

  private:
    void Take(Text text, std::int32_t selStart, std::int32_t selLength);

    Text text_;
    Lines lines_;
    std::int32_t selStart_ = 0;
    std::int32_t selLength_ = 0;
};

}  // namespace lintara::forms
