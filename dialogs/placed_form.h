// A form as those see it who remember where windows stood.
#pragma once

#include "forms/form.h"
#include "hostmodel/globals.h"

namespace lintara::dialogs {

class PlacedForm final : public hostmodel::PlacedWindow {
  public:
    // `form` outlives it.
    explicit PlacedForm(forms::Form& form) : form_(form) {}

    [[nodiscard]] Text Name() const override { return form_.Name(); }
    [[nodiscard]] std::int32_t Left() const override { return form_.Left(); }
    [[nodiscard]] std::int32_t Top() const override { return form_.Top(); }
    [[nodiscard]] std::int32_t Width() const override { return form_.Width(); }
    [[nodiscard]] std::int32_t Height() const override { return form_.Height(); }
    // The form gets a place of its own. It becomes no smaller than its minimum, and one that cannot be
    // resized keeps its size.
    void Move(std::int32_t left, std::int32_t top, std::int32_t width, std::int32_t height) override;

  private:
    forms::Form& form_;
};

}  // namespace lintara::dialogs
