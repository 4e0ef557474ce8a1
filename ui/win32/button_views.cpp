#include "ui/win32/button_views.h"

#include "forms/container.h"
#include "ui/win32/caption_text.h"

#include <algorithm>
#include <vector>

namespace lintara::ui::win32 {
namespace {

constexpr int markSize = 13;

// The mark, the gap behind it, and the caption with a dot for the frame of the focus on each side.
SIZE WithMark(SIZE caption, int mark, int gap) {
    return {mark + gap + caption.cx + 2, std::max<LONG>(mark, caption.cy)};
}

// The options of a group that the user can select, in their order.
std::vector<forms::OptionButton*> UsableOptions(const forms::Container& group) {
    std::vector<forms::OptionButton*> options;
    for (forms::Control* control : group.Controls()) {
        auto* option = dynamic_cast<forms::OptionButton*>(control);
        if (option != nullptr && option->Usable()) {
            options.push_back(option);
        }
    }
    return options;
}

}  // namespace

PushButtonView::PushButtonView(ViewContext& context, HWND parent, forms::CommandButton& button)
    : ControlView(context, parent, button, {.windowClass = WC_BUTTONW, .style = BS_PUSHBUTTON},
                  MarkedCaption(button.Caption())),
      button_(button) {}

SIZE PushButtonView::NeededSize() const {
    const SIZE caption = MeasureLine(FontInUse(), PlainCaption(button_.Caption()));
    return {caption.cx + Dots(16), caption.cy + Dots(8)};
}

void PushButtonView::Command(WORD code) {
    if (code == BN_CLICKED) {
        button_.Press();
    }
}

void PushButtonView::ShowAsDefault(bool isDefault) {
    const LONG_PTR style = ::GetWindowLongPtrW(Handle(), GWL_STYLE);
    const bool isShownAsDefault = (style & BS_TYPEMASK) == BS_DEFPUSHBUTTON;
    if (isDefault != isShownAsDefault) {
        Send(BM_SETSTYLE, isDefault ? BS_DEFPUSHBUTTON : BS_PUSHBUTTON, TRUE);
    }
}

CheckBoxView::CheckBoxView(ViewContext& context, HWND parent, forms::CheckBox& box)
    : ControlView(context, parent, box, {.windowClass = WC_BUTTONW, .style = BS_3STATE},
                  MarkedCaption(box.Caption())),
      box_(box) {
    Update(forms::Property::Value);
}

// The system numbers the states of a box as forms do.
void CheckBoxView::Update(forms::Property property) {
    if (property == forms::Property::Value) {
        Send(BM_SETCHECK, static_cast<WPARAM>(box_.Value()));
    }
}

SIZE CheckBoxView::NeededSize() const {
    return WithMark(MeasureLine(FontInUse(), PlainCaption(box_.Caption())), Dots(markSize), Dots(5));
}

void CheckBoxView::Command(WORD code) {
    if (code == BN_CLICKED) {
        box_.Toggle();
    }
}

OptionButtonView::OptionButtonView(ViewContext& context, HWND parent, forms::OptionButton& option)
    : ControlView(context, parent, option, {.windowClass = WC_BUTTONW, .style = BS_RADIOBUTTON},
                  MarkedCaption(option.Caption())),
      option_(option) {
    Update(forms::Property::Value);
}

void OptionButtonView::Update(forms::Property property) {
    if (property == forms::Property::Value) {
        Send(BM_SETCHECK, option_.Value() ? BST_CHECKED : BST_UNCHECKED);
    }
}

SIZE OptionButtonView::NeededSize() const {
    return WithMark(MeasureLine(FontInUse(), PlainCaption(option_.Caption())), Dots(markSize), Dots(5));
}

// The system takes the focus for a click on an option, which it is not: Tab may stop at one that is not
// selected.
void OptionButtonView::Command(WORD code) {
    if (code == BN_CLICKED && !isGettingFocus_) {
        option_.Select();
    }
}

LRESULT OptionButtonView::Receive(UINT message, WPARAM wParam, LPARAM lParam) {
    if (message == WM_KEYDOWN && TakeArrow(wParam)) {
        return 0;
    }
    if (message != WM_SETFOCUS) {
        return Default(message, wParam, lParam);
    }
    isGettingFocus_ = true;
    const LRESULT result = Default(message, wParam, lParam);
    isGettingFocus_ = false;
    return result;
}

// The arrow keys select the neighbours, round and round.
bool OptionButtonView::TakeArrow(WPARAM key) {
    const bool isForwards = key == VK_RIGHT || key == VK_DOWN;
    if (!isForwards && key != VK_LEFT && key != VK_UP) {
        return false;
    }
    std::vector<forms::OptionButton*> options = UsableOptions(*option_.Parent());
    if (!isForwards) {
        std::ranges::reverse(options);
    }
    const auto self = std::ranges::find(options, &option_);
    if (self != options.end()) {
        forms::OptionButton& next = std::next(self) == options.end() ? *options.front() : **std::next(self);
        next.SetFocus();
        next.Select();
    }
    return true;
}

}  // namespace lintara::ui::win32
