#include "controls/db_panel.h"

#include "base/statement.h"

namespace lintara::controls {

using forms::Color;

namespace {

constexpr std::int16_t DefaultBorderType = 1;
constexpr std::int16_t DefaultBackStyle = 0;
constexpr Color Shadow = Color::ButtonShadow;
constexpr Color Highlight = Color::ButtonHighlight;

}  // namespace

DBPanel::DBPanel(forms::Container& container, TextView name, const forms::Rect& place)
    : UserControl(container, name, place),
      lnTop(*this, u"lnTop", {}, Shadow),
      lnLeft(*this, u"lnLeft", {}, Shadow),
      lnBottom(*this, u"lnBottom", {}, Highlight),
      lnRight(*this, u"lnRight", {}, Highlight),
      lnTopE(*this, u"lnTopE", {}, Highlight),
      lnLeftE(*this, u"lnLeftE", {}, Highlight),
      lnBottomE(*this, u"lnBottomE", {}, Shadow),
      lnRightE(*this, u"lnRightE", {}, Shadow) {
    ShowInnerLines(false);
    UserControl_InitProperties();
    UserControl_Resize();
}

void DBPanel::SetBorderType(std::int16_t type) {
    borderType_ = type;
    ApplyBorderType();
    PropertyChanged(u"BorderType");
}

void DBPanel::SetBackColor(Color color) {
    UserControl::SetBackColor(color);
    PropertyChanged(u"BackColor");
}

void DBPanel::SetBackStyle(std::int16_t style) {
    Attempt(UserControl::SetBackStyle(style));
    PropertyChanged(u"BackStyle");
}

void DBPanel::UserControl_InitProperties() {
    borderType_ = DefaultBorderType;
    ApplyBorderType();
}

void DBPanel::UserControl_ReadProperties(const forms::PropertyBag& properties) {
    borderType_ = static_cast<std::int16_t>(properties.Read(u"BorderType", DefaultBorderType));
    ApplyBorderType();
    UserControl::SetBackColor(
        static_cast<Color>(properties.Read(u"BackColor", static_cast<std::uint32_t>(Color::ButtonFace))));
    Attempt(UserControl::SetBackStyle(
        static_cast<std::int16_t>(properties.Read(u"BackStyle", DefaultBackStyle))));
}

void DBPanel::UserControl_WriteProperties(forms::PropertyBag& properties) const {
    properties.Write(u"BorderType", borderType_, DefaultBorderType);
    properties.Write(u"BackColor", static_cast<std::uint32_t>(BackColor()),
                     static_cast<std::uint32_t>(Color::ButtonFace));
    properties.Write(u"BackStyle", BackStyle(), DefaultBackStyle);
}

// The inner lines keep the colours that they were made with.
void DBPanel::ApplyBorderType() {
    switch (borderType_) {
        case 0:
            ShowOuterLines(false);
            ShowInnerLines(false);
            break;
        case 1:
            ShowOuterLines(true);
            SetTopLeftColor(Shadow);
            SetBottomRightColor(Highlight);
            ShowInnerLines(false);
            break;
        case 2:
            ShowOuterLines(true);
            SetTopLeftColor(Highlight);
            SetBottomRightColor(Shadow);
            ShowInnerLines(false);
            break;
        case 3:
            ShowOuterLines(true);
            SetTopLeftColor(Shadow);
            SetBottomRightColor(Highlight);
            ShowInnerLines(true);
            break;
        case 4:
            ShowOuterLines(true);
            SetTopLeftColor(Shadow);
            SetBottomRightColor(Shadow);
            ShowInnerLines(false);
            break;
        default:
            break;
    }
}

void DBPanel::ShowOuterLines(bool shown) {
    lnTop.SetVisible(shown);
    lnLeft.SetVisible(shown);
    lnBottom.SetVisible(shown);
    lnRight.SetVisible(shown);
}

void DBPanel::ShowInnerLines(bool shown) {
    lnTopE.SetVisible(shown);
    lnLeftE.SetVisible(shown);
    lnBottomE.SetVisible(shown);
    lnRightE.SetVisible(shown);
}

void DBPanel::SetTopLeftColor(Color color) {
    lnTop.SetBorderColor(color);
    lnLeft.SetBorderColor(color);
}

void DBPanel::SetBottomRightColor(Color color) {
    lnBottom.SetBorderColor(color);
    lnRight.SetBorderColor(color);
}

// The inner line at the top ends a pixel before the one at the bottom does. That is how these frames have
// always looked.
void DBPanel::UserControl_Resize() {
    const forms::Twips w = ScaleWidth();
    const forms::Twips h = ScaleHeight();
    lnTop.SetEnds({0, 0, w, 0});
    lnTopE.SetEnds({15, 15, w - 30, 15});
    lnBottom.SetEnds({0, h - 15, w, h - 15});
    lnBottomE.SetEnds({15, h - 30, w - 15, h - 30});
    lnLeft.SetEnds({0, 0, 0, h});
    lnLeftE.SetEnds({15, 15, 15, h - 30});
    lnRight.SetEnds({w - 15, 0, w - 15, h});
    lnRightE.SetEnds({w - 30, 15, w - 30, h - 30});
    Resize.Raise();
}

}  // namespace lintara::controls
