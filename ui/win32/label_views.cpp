#include "ui/win32/label_views.h"

#include "forms/form.h"
#include "platform/wide_text.h"
#include "ui/win32/caption_text.h"

namespace lintara::ui::win32 {
namespace {

// The window decides where the bar is. Only one that can be resized has a grip.
DWORD StyleOf(forms::StatusBar& bar) {
    const forms::Form* form = bar.Root();
    const bool hasGrip = form != nullptr && form->resizable;
    return CCS_NOPARENTALIGN | CCS_NORESIZE | (hasGrip ? SBARS_SIZEGRIP : 0U);
}

}  // namespace

// Texts of one line stand in the middle of their height.
LabelView::LabelView(ViewContext& context, HWND parent, forms::Label& label)
    : ControlView(context, parent, label, {.windowClass = WC_STATICW, .style = SS_LEFT | SS_CENTERIMAGE},
                  MarkedCaption(label.Caption())),
      label_(label) {}

void LabelView::Update(forms::Property property) {
    if (property == forms::Property::Caption) {
        ::SetWindowTextW(Handle(), MarkedCaption(label_.Caption()).c_str());
    }
}

SIZE LabelView::NeededSize() const {
    const SIZE caption = MeasureLine(FontInUse(), PlainCaption(label_.Caption()));
    return {caption.cx + 1, caption.cy};
}

StatusBarView::StatusBarView(ViewContext& context, HWND parent, forms::StatusBar& bar)
    : ControlView(context, parent, bar, {.windowClass = STATUSCLASSNAMEW, .style = StyleOf(bar)}, L""),
      bar_(bar) {
    Update(forms::Property::Text);
}

void StatusBarView::Update(forms::Property property) {
    constexpr WPARAM onlyPart = 0;
    if (property == forms::Property::Text) {
        const std::wstring text = platform::ToWide(bar_.SimpleText());
        Send(SB_SETTEXTW, onlyPart | SBT_NOBORDERS, reinterpret_cast<LPARAM>(text.c_str()));
    }
}

SIZE StatusBarView::NeededSize() const {
    return {0, MeasureLine(FontInUse(), L"").cy + Dots(4)};
}

}  // namespace lintara::ui::win32
