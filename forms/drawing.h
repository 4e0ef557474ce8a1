// What only decorates: straight lines and rectangles.
#pragma once

#include "forms/color.h"
#include "forms/control.h"

namespace lintara::forms {

// A straight line of one pixel. Its ends may lie anywhere, outside its container too.
class LineControl final : public Control {
  public:
    LineControl(Container& container, TextView name, const Segment& ends, Color color)
        : Control(container, name, {}), ends_(ends), color_(color) {}

    void Accept(ControlVisitor& visitor) override;

    [[nodiscard]] const Segment& Ends() const { return ends_; }
    void SetEnds(const Segment& ends);
    [[nodiscard]] Color BorderColor() const { return color_; }
    void SetBorderColor(Color color);

  private:
    Segment ends_;
    Color color_;
};

// A filled rectangle with an outline, behind the controls that stand on it.
class Shape final : public Control {
  public:
    Shape(Container& container, TextView name, const Rect& place, Color borderColor)
        : Control(container, name, place), borderColor_(borderColor) {}

    void Accept(ControlVisitor& visitor) override;

    [[nodiscard]] Color BorderColor() const { return borderColor_; }
    [[nodiscard]] Color FillColor() const { return Color::WindowBackground; }

  private:
    Color borderColor_;
};

}  // namespace lintara::forms
