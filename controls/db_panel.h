// A panel with a bevelled frame of one or two pixels, drawn with eight lines in the desktop's colours. The
// dialogs group their controls in such panels.
#pragma once

#include "forms/container.h"
#include "forms/drawing.h"
#include "forms/event.h"
#include "forms/property_bag.h"

#include <cstdint>

namespace lintara::controls {

class DBPanel final : public forms::UserControl {
  public:
    // A new panel, with a sunken frame.
    DBPanel(forms::Container& container, TextView name, const forms::Rect& place);

    // 0 no frame, 1 sunken, 2 raised, 3 an etched groove, 4 flat. Any other value is kept but leaves the
    // frame as it was.
    [[nodiscard]] std::int16_t BorderType() const { return borderType_; }
    void SetBorderType(std::int16_t type);

    void SetBackColor(forms::Color color);
    void SetBackStyle(std::int16_t style);

    // Raised once after each change of the size, when the lines are in their places.
    forms::Event<> Resize;

    void UserControl_InitProperties();
    void UserControl_ReadProperties(const forms::PropertyBag& properties);
    void UserControl_WriteProperties(forms::PropertyBag& properties) const;

    // The frame. The first four lines are its outer ring, the others the inner one.
    forms::LineControl lnTop;
    forms::LineControl lnLeft;
    forms::LineControl lnBottom;
    forms::LineControl lnRight;
    forms::LineControl lnTopE;
    forms::LineControl lnLeftE;
    forms::LineControl lnBottomE;
    forms::LineControl lnRightE;

  protected:
    void SizeChanged() override { UserControl_Resize(); }

  private:
    void UserControl_Resize();
    void ApplyBorderType();
    void ShowOuterLines(bool shown);
    void ShowInnerLines(bool shown);
    void SetTopLeftColor(forms::Color color);
    void SetBottomRightColor(forms::Color color);

    std::int16_t borderType_ = 0;
};

}  // namespace lintara::controls
