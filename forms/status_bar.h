// The bar at the lower edge of a form, with one text. The form keeps it there, as wide as itself, and of the
// height it was made with.
#pragma once

#include "forms/control.h"

namespace lintara::forms {

class StatusBar final : public Control {
  public:
    using Control::Control;

    void Accept(ControlVisitor& visitor) override;

    [[nodiscard]] const Text& SimpleText() const { return text_; }
    void SetSimpleText(TextView text);

  private:
    Text text_;
};

}  // namespace lintara::forms
