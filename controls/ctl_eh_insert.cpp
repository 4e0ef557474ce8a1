#include "controls/ctl_eh_insert.h"

#include "base/constants.h"
#include "base/settings_table.h"
#include "base/statement.h"
#include "controls/buffer_keys.h"

namespace lintara::controls {

using forms::Color;
using forms::Twips;

namespace {

// How much of the width the label box leaves to its caption, and of the height the code box to what is above.
constexpr Twips BesideLabelBox = 1890;
constexpr Twips AboveCodeBox = 705;
constexpr Twips FrameAroundLabelBox = 90;

}  // namespace

CtlEHInsert::CtlEHInsert(forms::Container& container, TextView name, const forms::Rect& place,
                         SettingsStore& settings, forms::Toolkit& toolkit)
    : UserControl(container, name, place),
      Shape1(*this, u"Shape1", {1800, 0, 2640, 345}, Color::ButtonShadow),
      lblEHLabel(*this, u"lblEHLabel", {75, 60, 1680, 240}, u"Error han&dler's label:"),
      txtEHLabel(*this, u"txtEHLabel", {1845, 60, 2550, 240}, constants::DefaultErrorHandlerLabel),
      Line1(*this, u"Line1", {0, 375, 4440, 375}, Color::ButtonShadow),
      lblEHCode(*this, u"lblEHCode", {75, 435, 3000, 240}, u"Error &handler's code:"),
      txtEHCode(*this, u"txtEHCode", {0, AboveCodeBox, 4440, 1500}, constants::DefaultErrorHandlerCode,
                forms::TextBox::Lines::Many),
      Text1(*this, u"Text1", {}, constants::DefaultErrorHandlerCode, forms::TextBox::Lines::Many),
      toolkit_(toolkit) {
    txtEHLabel.bordered = false;
    txtEHCode.font = {.name = u"Courier New", .points = 9};
    Text1.SetVisible(false);
    txtEHLabel.Change.Handle([this] { txtEHLabel_Change(); });
    txtEHCode.Change.Handle([this] { txtEHCode_Change(); });
    txtEHLabel.GotFocus.Handle([this] { txtEHLabel.SelectAll(); });
    txtEHCode.GotFocus.Handle([this] { txtEHCode.SelectAll(); });
    txtEHCode.KeyDown.Handle(
        [this](std::int16_t keyCode, std::int16_t held) { txtEHCode_KeyDown(keyCode, held); });
    UserControl_Initialize(settings);
    UserControl_Resize();
}

void CtlEHInsert::SetState(bool enabled) {
    lblEHLabel.SetEnabled(enabled);
    lblEHCode.SetEnabled(enabled);
    txtEHLabel.SetEnabled(enabled);
    txtEHCode.SetEnabled(enabled);
}

void CtlEHInsert::EvaluateValidity() {
    txtEHLabel_Change();
    txtEHCode_Change();
}

// A box that holds its text already is not changed by it, so the two flags are brought up to date here as
// well.
void CtlEHInsert::UserControl_Initialize(SettingsStore& settings) {
    txtEHLabel.SetContents(ReadSetting(settings, *FindSetting(constants::ErrorHandlerLabelKey)));
    txtEHCode.SetContents(ReadSetting(settings, *FindSetting(constants::ErrorHandlerCodeKey)));
    EvaluateValidity();
}

void CtlEHInsert::UserControl_Resize() {
    const Twips w = ScaleWidth();
    const Twips h = ScaleHeight();
    if (w - BesideLabelBox > 0) {
        Attempt(txtEHLabel.SetWidth(w - BesideLabelBox));
    }
    if (txtEHLabel.Width() + FrameAroundLabelBox > 0) {
        Attempt(Shape1.SetWidth(txtEHLabel.Width() + FrameAroundLabelBox));
    }
    Attempt(txtEHCode.SetWidth(w));
    if (h - AboveCodeBox > 0) {
        Attempt(txtEHCode.SetHeight(h - AboveCodeBox));
    }
    const forms::Segment line = Line1.Ends();
    Line1.SetEnds({line.x1, line.y1, w, line.y2});
}

void CtlEHInsert::txtEHLabel_Change() {
    isLabelValid_ = !txtEHLabel.Contents().empty();
    IsValid.Raise(isLabelValid_ && isCodeValid_);
}

void CtlEHInsert::txtEHCode_Change() {
    isCodeValid_ = !txtEHCode.Contents().empty();
    IsValid.Raise(isCodeValid_ && isLabelValid_);
}

void CtlEHInsert::txtEHCode_KeyDown(std::int16_t keyCode, std::int16_t held) {
    ExchangeWithBuffer(keyCode, held, txtEHCode, sCCPBuffer, toolkit_);
}

}  // namespace lintara::controls
