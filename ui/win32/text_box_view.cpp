#include "ui/win32/text_box_view.h"

#include "forms/text_difference.h"
#include "platform/wide_text.h"
#include "ui/win32/keys.h"
#include "ui/win32/scroll_bars.h"

#include <utility>

namespace lintara::ui::win32 {
namespace {

// Boxes of many lines do not wrap them.
DWORD StyleOf(const forms::TextBox& box) {
    if (!box.IsMultiLine()) {
        return ES_AUTOHSCROLL;
    }
    return ES_MULTILINE | ES_WANTRETURN | ES_AUTOHSCROLL | ES_AUTOVSCROLL | WS_HSCROLL | WS_VSCROLL;
}

// Whether the system's control may have another text or selection after the message.
bool MayChangeText(UINT message) {
    const bool isKey = message >= WM_KEYFIRST && message <= WM_KEYLAST;
    const bool isMouse = message >= WM_MOUSEFIRST && message <= WM_MOUSELAST;
    const bool isClipboard = message >= WM_CUT && message <= WM_UNDO;
    const bool isOfEdit = message == EM_SETSEL || message == EM_REPLACESEL || message == EM_UNDO;
    const bool isInput = message >= WM_IME_SETCONTEXT && message <= WM_IME_KEYUP;
    return isKey || isMouse || isClipboard || isOfEdit || isInput || message == WM_SETTEXT ||
           message == WM_CONTEXTMENU || message == WM_IME_COMPOSITION || message == WM_IME_ENDCOMPOSITION;
}

}  // namespace

TextBoxView::TextBoxView(ViewContext& context, HWND parent, forms::TextBox& box)
    : ControlView(context, parent, box,
                  {.windowClass = WC_EDITW,
                   .style = StyleOf(box),
                   .extendedStyle = box.bordered ? DWORD{WS_EX_CLIENTEDGE} : 0U},
                  L""),
      box_(box) {
    const MirrorGate::Mirroring mirroring(Context().gate);
    // Without a limit: there is one of 32 K otherwise.
    Send(EM_SETLIMITTEXT, 0);
    ::SetWindowTextW(Handle(), platform::ToWide(box.Contents()).c_str());
    ShowInWindow();
}

SIZE TextBoxView::NeededSize() const {
    const int borders = box_.bordered ? 2 * ::GetSystemMetrics(SM_CYEDGE) : 0;
    return {0, MeasureLine(FontInUse(), L"").cy + borders + 2};
}

// One line without a border stands in the middle of its height, level with the label beside it. The system's
// control would have it at the top.
RECT TextBoxView::PlaceIn(const RECT& given) const {
    const LONG height = MeasureLine(FontInUse(), L"").cy;
    const LONG spare = given.bottom - given.top - height;
    if (box_.bordered || box_.IsMultiLine() || spare <= 0) {
        return given;
    }
    const LONG top = given.top + spare / 2;
    return {given.left, top, given.right, top + height};
}

void TextBoxView::Update(forms::Property property) {
    const bool concernsText = property == forms::Property::Text || property == forms::Property::Selection;
    if (concernsText && !isTaking_) {
        ShowInWindow();
    }
}

void TextBoxView::Command(WORD code) {
    if (code != EN_CHANGE || IsMirroring() || isTaking_) {
        return;
    }
    hasChanged_ = true;
    if (depth_ == 0) {
        TakeFromWindow();
    }
}

LRESULT TextBoxView::Receive(UINT message, WPARAM wParam, LPARAM lParam) {
    const bool isTaken = ((message == WM_KEYDOWN || message == WM_SYSKEYDOWN) && TakeKey(wParam)) ||
                         (message == WM_CHAR && TakeCharacter(wParam)) ||
                         (message == WM_MOUSEWHEEL && TakeWheel(wParam));
    if (isTaken) {
        return 0;
    }
    if (IsMirroring() || isTaking_ || !MayChangeText(message)) {
        const LRESULT result = Default(message, wParam, lParam);
        if (message == WM_SIZE) {
            ArrangeBars();
        }
        return result;
    }
    ++depth_;
    const LRESULT result = Default(message, wParam, lParam);
    --depth_;
    // A box of many lines does not tell of this one.
    hasChanged_ = hasChanged_ || message == WM_SETTEXT;
    if (depth_ == 0) {
        TakeFromWindow();
    }
    return result;
}

// The form hears of the key first.
bool TextBoxView::TakeKey(WPARAM key) {
    const std::int16_t held = HeldKeys();
    if (box_.Usable()) {
        box_.KeyDown.Raise(static_cast<std::int16_t>(key), held);
    }
    const bool isArrow = key == VK_UP || key == VK_DOWN;
    if (isArrow && held == 0 && arrows_ != nullptr) {
        arrows_->Step(key == VK_UP ? 1 : -1);
        return true;
    }
    if (key == VK_TAB && held == forms::shift::Ctrl && box_.IsMultiLine()) {
        box_.Type(u"\t");
        return true;
    }
    return false;
}

// Characters by which the system's control means other keys than the user has pressed, or which it would
// write. With Shift and Ctrl a letter is a key of the form's alone: the system's control would take
// Ctrl+Shift+V for Ctrl+V and paste what the clipboard has.
bool TextBoxView::TakeCharacter(WPARAM character) {
    constexpr WPARAM selectAll = 1;
    constexpr WPARAM ctrlTab = L'\t';
    constexpr WPARAM lastOfLetters = 26;
    constexpr WPARAM ctrlBackspace = 0x7F;
    const std::int16_t held = HeldKeys();
    if (character == selectAll && held == forms::shift::Ctrl) {
        box_.SelectAll();
        return true;
    }
    const bool isOfShiftAndCtrl =
        held == forms::shift::Shift + forms::shift::Ctrl && character >= 1 && character <= lastOfLetters;
    return isOfShiftAndCtrl || character == ctrlTab || character == ctrlBackspace;
}

bool TextBoxView::TakeWheel(WPARAM wParam) {
    if (arrows_ == nullptr) {
        return false;
    }
    wheel_ += static_cast<std::int16_t>(HIWORD(wParam));
    const int steps = wheel_ / WHEEL_DELTA;
    if (steps != 0) {
        wheel_ -= steps * WHEEL_DELTA;
        arrows_->Step(steps);
    }
    return true;
}

Text TextBoxView::WindowText() const {
    std::wstring text(static_cast<std::size_t>(::GetWindowTextLengthW(Handle())), L'\0');
    const int length = ::GetWindowTextW(Handle(), text.data(), static_cast<int>(text.size()) + 1);
    text.resize(static_cast<std::size_t>(length));
    return platform::FromWide(text);
}

TextBoxView::Selection TextBoxView::WindowSelection() const {
    Selection selection;
    Send(EM_GETSEL, reinterpret_cast<WPARAM>(&selection.start), reinterpret_cast<LPARAM>(&selection.end));
    return selection;
}

TextBoxView::Selection TextBoxView::BoxSelection() const {
    const auto start = static_cast<DWORD>(box_.SelStart());
    return {.start = start, .end = start + static_cast<DWORD>(box_.SelLength())};
}

void TextBoxView::TakeFromWindow() {
    const Selection selection = WindowSelection();
    const bool hasNewText = std::exchange(hasChanged_, false);
    if (!hasNewText && selection == BoxSelection()) {
        return;
    }
    isTaking_ = true;
    box_.Edit(hasNewText ? WindowText() : box_.Contents(), static_cast<std::int32_t>(selection.start),
              static_cast<std::int32_t>(selection.end - selection.start));
    isTaking_ = false;
    ShowInWindow();
    if (hasNewText) {
        ArrangeBars();
    }
}

void TextBoxView::ShowInWindow() {
    const MirrorGate::Mirroring mirroring(Context().gate);
    const Text shown = WindowText();
    const forms::TextDifference difference = forms::DifferenceOf(shown, box_.Contents());
    if (!difference.IsNone()) {
        const auto end = static_cast<LPARAM>(difference.at + difference.removed);
        const std::wstring inserted = platform::ToWide(difference.inserted);
        Send(EM_SETSEL, difference.at, end);
        Send(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(inserted.c_str()));
        ArrangeBars();
    }
    const Selection selection = BoxSelection();
    if (selection != WindowSelection()) {
        Send(EM_SETSEL, selection.start, static_cast<LPARAM>(selection.end));
        Send(EM_SCROLLCARET);
    }
}

void TextBoxView::FontChanged() {
    ControlView::FontChanged();
    ArrangeBars();
}

// Bars that come or go change the size, which is no reason to begin again.
void TextBoxView::ArrangeBars() {
    if (box_.IsMultiLine() && !std::exchange(isArranging_, true)) {
        ShowNeededBars(Handle(), box_.Contents(), FontInUse());
        isArranging_ = false;
    }
}

}  // namespace lintara::ui::win32
