// Controls that hold other controls: frames, user controls, forms.
#pragma once

#include "forms/color.h"
#include "forms/control.h"
#include "forms/event.h"

#include <cstdint>
#include <set>
#include <vector>

namespace lintara::forms {

class Container : public Control {
  public:
    using Control::Control;

    // The controls in it, in the order in which they were made. That is the order of the tab key too, those
    // of a container in its place, and the order from back to front.
    [[nodiscard]] const std::vector<Control*>& Controls() const { return controls_; }

    // The size of the inside, where its controls are placed.
    [[nodiscard]] Twips ScaleWidth() const { return Width(); }
    [[nodiscard]] Twips ScaleHeight() const { return Height(); }

  private:
    friend class Control;

    std::vector<Control*> controls_;
};

// A frame without a border or a caption: it only holds its controls together.
class Frame final : public Container {
  public:
    using Container::Container;

    void Accept(ControlVisitor& visitor) override;
};

// The surface of a control that is composed of others.
class UserControl : public Container {
  public:
    using Container::Container;

    void Accept(ControlVisitor& visitor) override;

    [[nodiscard]] Color BackColor() const { return backColor_; }
    void SetBackColor(Color color);
    // 0 transparent, 1 opaque; any other value is an error and changes nothing.
    [[nodiscard]] std::int16_t BackStyle() const { return backStyle_; }
    Result<void> SetBackStyle(std::int16_t style);

    // The handle of its widget in the windowing system; 0 while it is not shown.
    [[nodiscard]] std::uintptr_t hWnd() const { return handle_; }
    void SetHandle(std::uintptr_t handle) { handle_ = handle; }

    // The properties that were set and that its container is to keep.
    [[nodiscard]] const std::set<Text>& ChangedProperties() const { return changedProperties_; }

  protected:
    void PropertyChanged(TextView name) { changedProperties_.emplace(name); }

  private:
    std::set<Text> changedProperties_;
    std::uintptr_t handle_ = 0;
    Color backColor_ = Color::ButtonFace;
    std::int16_t backStyle_ = 0;
};

}  // namespace lintara::forms
