// The pair of small arrows that counts the number in a text box, its buddy, up and down.
#pragma once

#include "forms/event.h"
#include "forms/text_box.h"

#include <cstdint>

namespace lintara::forms {

class UpDown final : public Control {
  public:
    struct Range {
        std::int32_t min = 0;
        std::int32_t max = 10;
    };

    // Its first value is the number in the buddy.
    UpDown(Container& container, TextView name, const Rect& place, TextBox& buddy, const Range& range);

    void Accept(ControlVisitor& visitor) override;

    [[nodiscard]] TextBox& Buddy() const { return buddy_; }
    [[nodiscard]] const Range& Bounds() const { return range_; }

    // Setting it writes it into the buddy and raises Change. A value outside the range is an error, which
    // changes nothing.
    [[nodiscard]] std::int32_t Value() const { return value_; }
    Result<void> SetValue(std::int32_t value);

    Event<> Change;

    // The user presses an arrow: up for +1, down for -1. It counts from the number in the buddy, or from the
    // last value when there is none, and stops at the ends of the range.
    void Step(std::int32_t by);

  private:
    TextBox& buddy_;
    Range range_;
    std::int32_t value_ = 0;
};

}  // namespace lintara::forms
