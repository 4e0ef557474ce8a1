#include "ui/win32/control_view.h"

#include "ui/win32/dpi.h"

#include <system_error>

namespace lintara::ui::win32 {
namespace {

constexpr UINT_PTR subclassId = 1;

}  // namespace

ControlView::ControlView(ViewContext& context, HWND parent, forms::Control& control, const Style& style,
                         const std::wstring& text)
    : context_(context), control_(control) {
    const DWORD visible = control.Visible() ? WS_VISIBLE : 0;
    const DWORD disabled = control.Enabled() ? 0 : WS_DISABLED;
    handle_ = ::CreateWindowExW(style.extendedStyle, style.windowClass, text.c_str(),
                                WS_CHILD | visible | disabled | style.style, 0, 0, 0, 0, parent, nullptr,
                                context.module, nullptr);
    if (handle_ == nullptr) {
        throw std::system_error(static_cast<int>(::GetLastError()), std::system_category(),
                                "a control cannot be made");
    }
    context_.views.emplace(handle_, this);
    ::SetWindowSubclass(handle_, &ControlView::Procedure, subclassId, reinterpret_cast<DWORD_PTR>(this));
}

// The window that it stands in destroys the system control, or has done so already.
ControlView::~ControlView() {
    context_.views.erase(handle_);
    ::RemoveWindowSubclass(handle_, &ControlView::Procedure, subclassId);
}

void ControlView::FontChanged() {
    Send(WM_SETFONT, reinterpret_cast<WPARAM>(FontInUse()), TRUE);
}

int ControlView::Dots(int designed) const {
    return ::MulDiv(designed, context_.fonts.dpi(), DesignedDpi);
}

LRESULT CALLBACK ControlView::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                        UINT_PTR /*id*/, DWORD_PTR view) noexcept {
    auto& self = *reinterpret_cast<ControlView*>(view);
    try {
        return self.ReceiveWithFocus(message, wParam, lParam);
    } catch (...) {
        self.context_.failure = std::current_exception();
        return ::DefWindowProcW(window, message, wParam, lParam);
    }
}

// The system control has the focus first, so that what the form selects then stays selected.
LRESULT ControlView::ReceiveWithFocus(UINT message, WPARAM wParam, LPARAM lParam) {
    const LRESULT result = Receive(message, wParam, lParam);
    if (message == WM_SETFOCUS && !IsMirroring()) {
        control_.SetFocus();
    }
    return result;
}

}  // namespace lintara::ui::win32
