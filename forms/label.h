// A label. Its access key gives the focus to the next control in tab order that takes it.
#pragma once

#include "forms/control.h"

namespace lintara::forms {

class Label final : public Control {
  public:
    Label(Container& container, TextView name, const Rect& place, TextView caption)
        : Control(container, name, place), caption_(caption) {}

    void Accept(ControlVisitor& visitor) override;

    // With its access key marked; see forms/caption.h.
    [[nodiscard]] const Text& Caption() const { return caption_; }
    void SetCaption(TextView caption);

  private:
    Text caption_;
};

}  // namespace lintara::forms
