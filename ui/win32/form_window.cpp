#include "ui/win32/form_window.h"

#include "base/statement.h"
#include "forms/buttons.h"
#include "forms/keyboard.h"
#include "forms/text_box.h"
#include "platform/wide_text.h"
#include "ui/win32/button_views.h"
#include "ui/win32/container_view.h"
#include "ui/win32/dpi.h"
#include "ui/win32/keys.h"
#include "ui/win32/tree_window.h"
#include "ui/win32/window_classes.h"

#include <algorithm>
#include <system_error>
#include <utility>

namespace lintara::ui::win32 {
namespace {

constexpr UINT_PTR subclassId = 1;

// A dialog's frame, which shows no icon.
constexpr DWORD extendedStyle = WS_EX_DLGMODALFRAME | WS_EX_CONTROLPARENT;

DWORD StyleOf(const forms::Form& form) {
    const DWORD border = form.resizable ? DWORD{WS_THICKFRAME} : 0U;
    return WS_POPUP | WS_CAPTION | WS_SYSMENU | WS_CLIPCHILDREN | border;
}

LONG WidthOf(const RECT& rect) {
    return rect.right - rect.left;
}

LONG HeightOf(const RECT& rect) {
    return rect.bottom - rect.top;
}

RECT InsideOf(HWND window) {
    RECT inside{};
    ::GetClientRect(window, &inside);
    return inside;
}

// The part of the screen nearest to `place` where windows can be.
RECT RoomNear(const RECT& place) {
    MONITORINFO screen{};
    screen.cbSize = sizeof screen;
    ::GetMonitorInfoW(::MonitorFromRect(&place, MONITOR_DEFAULTTONEAREST), &screen);
    return screen.rcWork;
}

POINT MovedInto(const RECT& room, POINT corner, SIZE size) {
    const LONG right = std::max(room.left, room.right - size.cx);
    const LONG bottom = std::max(room.top, room.bottom - size.cy);
    return {std::clamp(corner.x, room.left, right), std::clamp(corner.y, room.top, bottom)};
}

void MoveTo(HWND window, const RECT& place) {
    ::SetWindowPos(window, nullptr, place.left, place.top, WidthOf(place), HeightOf(place),
                   SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOOWNERZORDER);
}

}  // namespace

FormWindow::FormWindow(HINSTANCE module, forms::Form& form, HWND owner, const Pointer& pointer)
    : form_(form), pointer_(pointer), context_(module, DpiOf(owner)), surface_(context_, form) {
    handle_ =
        ::CreateWindowExW(extendedStyle, WindowClasses::Form, platform::ToWide(form.FormCaption()).c_str(),
                          StyleOf(form), 0, 0, 0, 0, owner, nullptr, module, nullptr);
    if (handle_ == nullptr) {
        throw std::system_error(static_cast<int>(::GetLastError()), std::system_category(),
                                "a window cannot be made");
    }
    ::SetWindowSubclass(handle_, &FormWindow::Procedure, subclassId, reinterpret_cast<DWORD_PTR>(this));
    try {
        MakeControls();
    } catch (...) {
        ::RemoveWindowSubclass(handle_, &FormWindow::Procedure, subclassId);
        ::DestroyWindow(handle_);
        throw;
    }
    form_.SetMirror(this);
}

FormWindow::~FormWindow() {
    form_.SetMirror(nullptr);
    SetHandles(false);
    if (handle_ != nullptr) {
        Disappear();
        ::RemoveWindowSubclass(handle_, &FormWindow::Procedure, subclassId);
        ::DestroyWindow(handle_);
    }
}

HWND FormWindow::HandleOf(const forms::Control& control) const {
    const auto found = views_.find(&control);
    return found == views_.end() ? nullptr : found->second->Handle();
}

// --- making the controls ---

void FormWindow::MakeControls() {
    const MirrorGate::Mirroring mirroring(context_.gate);
    ViewMaker(context_, views_).MakeAll(form_, handle_);
    ApplyFonts();
    ChooseScale();
    PlaceAll();
    PlaceOnScreen();
    ShowDefaultButton();
    SetHandles(true);
}

void FormWindow::SetHandles(bool shown) {
    for (forms::Control* control : form_.ControlsInOrder()) {
        if (auto* surface = dynamic_cast<forms::UserControl*>(control)) {
            surface->SetHandle(shown ? reinterpret_cast<std::uintptr_t>(HandleOf(*surface)) : 0);
        }
    }
}

// --- sizes and places ---

void FormWindow::ApplyFonts() {
    for (const auto& [control, view] : views_) {
        view->FontChanged();
    }
}

void FormWindow::ChooseScale() {
    Scale scale(context_.fonts.dpi());
    scale.LimitGrowth({form_.Width(), form_.Height()}, PixelsOf(RoomForInside()));
    for (const auto& [control, view] : views_) {
        scale.GrowToFit({control->Width(), control->Height()}, PixelsOf(view->NeededSize()));
    }
    context_.scale = scale;
}

void FormWindow::PlaceAll() {
    for (const auto& [control, view] : views_) {
        PlaceControl(view->Control());
    }
    ::InvalidateRect(handle_, nullptr, TRUE);
}

// Edges are rounded to pixels as seen from the form, so that what fills its container to the edge is not cut
// off by it.
void FormWindow::PlaceControl(forms::Control& control) {
    forms::Rect place = control.Place();
    forms::Rect container;
    for (const forms::Container* c = control.Parent(); c != nullptr && c != &form_; c = c->Parent()) {
        container.left += c->Left();
        container.top += c->Top();
    }
    place.left += container.left;
    place.top += container.top;
    RECT pixels = context_.scale.ToPixels(place);
    ::OffsetRect(&pixels, -context_.scale.X(container.left), -context_.scale.Y(container.top));
    const ControlView& view = *views_.at(&control);
    MoveTo(view.Handle(), view.PlaceIn(pixels));
}

// What is in a container that moves may be rounded to other pixels.
void FormWindow::PlaceWithContents(forms::Control& control) {
    if (HandleOf(control) != nullptr) {
        PlaceControl(control);
    }
    if (const auto* container = dynamic_cast<const forms::Container*>(&control)) {
        for (forms::Control* inner : container->Controls()) {
            PlaceWithContents(*inner);
        }
        ::InvalidateRect(HandleOf(control), nullptr, TRUE);
    }
}

SIZE FormWindow::OuterSize(SIZE inside) const {
    const RECT frame = WithFrame(inside, StyleOf(form_), extendedStyle, context_.fonts.dpi());
    return {WidthOf(frame), HeightOf(frame)};
}

SIZE FormWindow::RoomForInside() const {
    RECT place{};
    ::GetWindowRect(handle_, &place);
    const RECT room = RoomNear(place);
    const SIZE frame = OuterSize({0, 0});
    return {WidthOf(room) - frame.cx, HeightOf(room) - frame.cy};
}

void FormWindow::PlaceWindow() {
    const SIZE size = OuterSize(context_.scale.ToPixels(forms::Size{form_.Width(), form_.Height()}));
    ::SetWindowPos(handle_, nullptr, 0, 0, size.cx, size.cy, SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
}

// Where it was the last time, else in the middle of the screen; in either case wholly on a screen, if it fits
// on one.
void FormWindow::PlaceOnScreen() {
    const Scale screenScale(context_.fonts.dpi());
    const SIZE wanted = OuterSize(context_.scale.ToPixels(forms::Size{form_.Width(), form_.Height()}));
    RECT place{};
    ::GetWindowRect(::GetWindow(handle_, GW_OWNER), &place);
    POINT corner{screenScale.X(form_.Left()), screenScale.Y(form_.Top())};
    if (form_.placed) {
        place = {corner.x, corner.y, corner.x + wanted.cx, corner.y + wanted.cy};
    }
    const RECT room = RoomNear(place);
    SIZE size = wanted;
    if (form_.resizable) {
        size = {std::min(size.cx, WidthOf(room)), std::min(size.cy, HeightOf(room))};
    }
    if (!form_.placed) {
        corner = {(room.left + room.right - size.cx) / 2, (room.top + room.bottom - size.cy) / 2};
    }
    corner = MovedInto(room, corner, size);
    ::SetWindowPos(handle_, nullptr, corner.x, corner.y, size.cx, size.cy, SWP_NOZORDER | SWP_NOACTIVATE);
}

// --- the life of the window ---

void FormWindow::Show() {
    form_.placed = true;
    TakePlace();
    if (!IsOpen()) {
        return;
    }
    for (const auto& [control, view] : views_) {
        if (auto* tree = dynamic_cast<TreeWindow*>(view.get())) {
            tree->ShowInView();
        }
    }
    activeBefore_ = ::GetActiveWindow();
    focusBefore_ = ::GetFocus();
    block_.emplace(handle_);
    if (!form_.Enabled()) {
        ::EnableWindow(handle_, FALSE);
    }
    ::ShowWindow(handle_, SW_SHOW);
    ::UpdateWindow(handle_);
}

void FormWindow::Finish() {
    if (context_.failure != nullptr) {
        const std::exception_ptr failure = std::exchange(context_.failure, nullptr);
        form_.SetMirror(nullptr);
        form_.Hide();
        std::rethrow_exception(failure);
    }
}

// The thread's other windows can be used again before this one goes, so that one of them becomes active; the
// one that was gets the keyboard back.
void FormWindow::Disappear() {
    if (!block_) {
        return;
    }
    block_->Release();
    block_.reset();
    const bool wasActive = ::GetActiveWindow() == handle_;
    ::ShowWindow(handle_, SW_HIDE);
    if (!wasActive || ::IsWindow(activeBefore_) == FALSE) {
        return;
    }
    ::SetActiveWindow(activeBefore_);
    if (::IsWindow(focusBefore_) != FALSE && ::GetFocus() != focusBefore_) {
        ::SetFocus(focusBefore_);
    }
}

// --- from the form to the controls ---

void FormWindow::Changed(forms::Control& control, forms::Property property) {
    const MirrorGate::Mirroring mirroring(context_.gate);
    const auto view = views_.find(&control);
    if (&control == &form_) {
        UpdateForm(property);
    } else if (view != views_.end()) {
        UpdateControl(control, *view->second, property);
    } else {
        RepaintAround(control);
    }
}

void FormWindow::UpdateForm(forms::Property property) {
    switch (property) {
        case forms::Property::Visible:
            if (!form_.Visible()) {
                Disappear();
            }
            break;
        case forms::Property::Enabled:
            ::EnableWindow(handle_, form_.Enabled() ? TRUE : FALSE);
            break;
        case forms::Property::Place:
            PlaceWindow();
            break;
        default:
            break;
    }
}

void FormWindow::UpdateControl(forms::Control& control, ControlView& view, forms::Property property) {
    switch (property) {
        case forms::Property::Place:
            PlaceWithContents(control);
            break;
        case forms::Property::Enabled:
            ::EnableWindow(view.Handle(), control.Enabled() ? TRUE : FALSE);
            break;
        case forms::Property::Visible:
            ::ShowWindow(view.Handle(), control.Visible() ? SW_SHOWNA : SW_HIDE);
            break;
        case forms::Property::Focus:
            ShowFocus();
            ShowDefaultButton();
            break;
        case forms::Property::Caption:
            view.Update(property);
            UpdateCaption();
            break;
        default:
            view.Update(property);
            break;
    }
}

// A new caption may need more room.
void FormWindow::UpdateCaption() {
    const Scale before = context_.scale;
    ChooseScale();
    if (context_.scale != before) {
        PlaceAll();
        PlaceWindow();
    }
}

void FormWindow::RepaintAround(const forms::Control& control) {
    const forms::Container* container = control.Parent();
    ::InvalidateRect(container == &form_ ? handle_ : HandleOf(*container), nullptr, TRUE);
}

// While another window has the keyboard, this one waits for its turn.
void FormWindow::ShowFocus() {
    if (::GetActiveWindow() != handle_) {
        return;
    }
    const MirrorGate::Mirroring mirroring(context_.gate);
    const forms::Control* active = form_.ActiveControl();
    const HWND control = active == nullptr ? nullptr : HandleOf(*active);
    ::SetFocus(control == nullptr ? handle_ : control);
}

// The button that Enter presses: the one with the focus, else the form's default button.
void FormWindow::ShowDefaultButton() {
    const auto* active = dynamic_cast<const forms::CommandButton*>(form_.ActiveControl());
    for (const auto& [control, view] : views_) {
        if (auto* button = dynamic_cast<PushButtonView*>(view.get())) {
            const auto& command = static_cast<const forms::CommandButton&>(*control);
            button->ShowAsDefault(active == nullptr ? command.isDefault : active == &command);
        }
    }
}

// --- from the user to the form ---

LRESULT CALLBACK FormWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                       UINT_PTR /*id*/, DWORD_PTR self) noexcept {
    auto& formWindow = *reinterpret_cast<FormWindow*>(self);
    try {
        return formWindow.Receive(message, wParam, lParam);
    } catch (...) {
        formWindow.context_.failure = std::current_exception();
        return ::DefWindowProcW(window, message, wParam, lParam);
    }
}

LRESULT FormWindow::Receive(UINT message, WPARAM wParam, LPARAM lParam) {
    const auto result = surface_.Receive(handle_, message, wParam, lParam);
    return result ? *result : ReceiveForWindow(message, wParam, lParam);
}

LRESULT FormWindow::ReceiveForWindow(UINT message, WPARAM wParam, LPARAM lParam) {
    switch (message) {
        case WM_CLOSE:
            Close();
            return 0;
        case WM_SETFOCUS:
            ShowFocus();
            return 0;
        case WM_SETCURSOR:
            if (pointer_.IsBusy() && LOWORD(lParam) == HTCLIENT) {
                ::SetCursor(::LoadCursorW(nullptr, IDC_WAIT));
                return TRUE;
            }
            break;
        case WM_MOVE:
        case WM_SIZE:
            TakePlace();
            break;
        case WM_GETMINMAXINFO:
            TakeMinimum(*reinterpret_cast<MINMAXINFO*>(lParam));
            return 0;
        case DpiChangedMessage:
            TakeDpi(HIWORD(wParam), *reinterpret_cast<const RECT*>(lParam));
            return 0;
        case WM_SYSCOLORCHANGE:
        case WM_SETTINGCHANGE:
        case WM_THEMECHANGED:
            TakeColors(message, wParam, lParam);
            break;
        case WM_NCDESTROY:
            TakeEnd();
            return 0;
        default:
            break;
    }
    return ::DefSubclassProc(handle_, message, wParam, lParam);
}

// A size that came of the form's own is in the form already, and more precisely than in pixels.
void FormWindow::TakePlace() {
    if (context_.gate.IsMirroring() || ::IsIconic(handle_) != FALSE) {
        return;
    }
    const Scale screenScale(context_.fonts.dpi());
    RECT outside{};
    ::GetWindowRect(handle_, &outside);
    const RECT inside = InsideOf(handle_);
    const RECT shown = context_.scale.ToPixels(forms::Rect{0, 0, form_.Width(), form_.Height()});
    forms::Rect place = form_.Place();
    place.left = screenScale.X(place.left) == outside.left ? place.left : screenScale.TwipsOfX(outside.left);
    place.top = screenScale.Y(place.top) == outside.top ? place.top : screenScale.TwipsOfY(outside.top);
    place.width = shown.right == inside.right ? place.width : context_.scale.TwipsOfX(inside.right);
    place.height = shown.bottom == inside.bottom ? place.height : context_.scale.TwipsOfY(inside.bottom);
    Attempt(form_.Move(place));
}

void FormWindow::TakeMinimum(MINMAXINFO& info) const {
    const SIZE minimum = OuterSize(context_.scale.ToPixels(form_.minimum));
    info.ptMinTrackSize = {minimum.cx, minimum.cy};
}

// The window has come to a screen of another density.
void FormWindow::TakeDpi(int dpi, const RECT& suggested) {
    const MirrorGate::Mirroring mirroring(context_.gate);
    FontSet fonts(dpi);
    std::swap(context_.fonts, fonts);
    ApplyFonts();
    ChooseScale();
    PlaceAll();
    MoveTo(handle_, suggested);
    PlaceWindow();
}

// Controls of the old version do not hear of it by themselves.
void FormWindow::TakeColors(UINT message, WPARAM wParam, LPARAM lParam) {
    surface_.UpdateColors();
    for (const auto& [control, view] : views_) {
        if (message == WM_SYSCOLORCHANGE) {
            ::SendMessageW(view->Handle(), message, wParam, lParam);
        }
        if (auto* container = dynamic_cast<ContainerView*>(view.get())) {
            container->UpdateColors();
        }
    }
    ::RedrawWindow(handle_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

// Its owner has taken the window with it.
void FormWindow::TakeEnd() {
    ::RemoveWindowSubclass(handle_, &FormWindow::Procedure, subclassId);
    handle_ = nullptr;
    form_.SetMirror(nullptr);
    if (block_) {
        block_->Release();
    }
    Close();
}

bool FormWindow::TakeKey(const MSG& message) noexcept {
    try {
        const std::int16_t held = HeldKeys();
        if (message.message == WM_SYSCHAR) {
            return forms::PressAccessKey(form_, static_cast<char16_t>(message.wParam));
        }
        if (message.message != WM_KEYDOWN || (held & ~forms::shift::Shift) != 0) {
            return false;
        }
        if (message.wParam == VK_TAB) {
            forms::PressTab(form_, held == forms::shift::Shift);
            return true;
        }
        if (held != 0) {
            return false;
        }
        return (message.wParam == VK_RETURN && forms::PressEnter(form_)) ||
               (message.wParam == VK_ESCAPE && forms::PressEscape(form_));
    } catch (...) {
        context_.failure = std::current_exception();
        return true;
    }
}

}  // namespace lintara::ui::win32
