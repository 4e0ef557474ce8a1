// What the user clicks: command buttons, check boxes, option buttons.
#pragma once

#include "forms/container.h"
#include "forms/control.h"
#include "forms/event.h"

#include <cstdint>

namespace lintara::forms {

class CommandButton final : public Control {
  public:
    CommandButton(Container& container, TextView name, const Rect& place, TextView caption)
        : Control(container, name, place), caption_(caption) {}

    void Accept(ControlVisitor& visitor) override;
    [[nodiscard]] bool TakesFocus() const override { return true; }

    [[nodiscard]] const Text& Caption() const { return caption_; }
    // Whether Enter presses it while no other button has the focus, and whether Esc does.
    bool isDefault = false;
    bool isCancel = false;

    Event<> Click;

    // The user presses it. Ignored when it is not usable.
    void Press();

  private:
    Text caption_;
};

class CheckBox final : public Control {
  public:
    static constexpr std::int16_t Unchecked = 0;
    static constexpr std::int16_t Checked = 1;
    static constexpr std::int16_t Grayed = 2;

    CheckBox(Container& container, TextView name, const Rect& place, TextView caption)
        : Control(container, name, place), caption_(caption) {}

    void Accept(ControlVisitor& visitor) override;
    [[nodiscard]] bool TakesFocus() const override { return true; }

    [[nodiscard]] const Text& Caption() const { return caption_; }
    // Raises Click. A value other than the three is an error, which changes nothing.
    [[nodiscard]] std::int16_t Value() const { return value_; }
    Result<void> SetValue(std::int16_t value);

    Event<> Click;

    // The user clicks on it: it becomes checked, or unchecked when it was not. Ignored when it is not usable.
    void Toggle();

  private:
    Text caption_;
    std::int16_t value_ = Unchecked;
};

// One of the option buttons of a container, of which one at most is selected.
class OptionButton final : public Control {
  public:
    OptionButton(Container& container, TextView name, const Rect& place, TextView caption)
        : Control(container, name, place), caption_(caption) {}

    void Accept(ControlVisitor& visitor) override;
    [[nodiscard]] bool TakesFocus() const override { return true; }

    [[nodiscard]] const Text& Caption() const { return caption_; }
    // Selecting it deselects its neighbours, without an event of theirs, and raises Click.
    [[nodiscard]] bool Value() const { return value_; }
    void SetValue(bool value);

    Event<> Click;

    // The user selects it. Ignored when it is not usable.
    void Select();

  private:
    Text caption_;
    bool value_ = false;
};

}  // namespace lintara::forms
