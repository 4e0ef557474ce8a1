#include "ui/win32/win32_toolkit.h"

#include "forms/form.h"
#include "platform/wide_text.h"
#include "ui/win32/dpi.h"
#include "ui/win32/form_window.h"
#include "ui/win32/help.h"
#include "ui/win32/system_colors.h"

#include <ranges>

namespace lintara::ui::win32 {
namespace {

constexpr const wchar_t* applicationName = L"Tarnwick Lintara";

// A window among those that are shown, while the block lasts.
class Shown {
  public:
    Shown(std::vector<FormWindow*>& windows, FormWindow& window) : windows_(windows), window_(window) {
        windows_.push_back(&window);
    }
    ~Shown() { std::erase(windows_, &window_); }
    Shown(const Shown&) = delete;
    Shown& operator=(const Shown&) = delete;

  private:
    std::vector<FormWindow*>& windows_;
    FormWindow& window_;
};

}  // namespace

Win32Toolkit::Win32Toolkit(HINSTANCE module, HWND owner)
    : module_(module), owner_(owner), classes_(module), controls_(module) {}

Win32Toolkit::~Win32Toolkit() = default;

void Win32Toolkit::RunModal(forms::Form& form) {
    std::unique_ptr<FormWindow> window;
    try {
        const ControlsContext::Activation activation(controls_);
        window = std::make_unique<FormWindow>(module_, form, Owner(), pointer_);
    } catch (...) {
        form.Hide();
        throw;
    }
    const Shown shown(windows_, *window);
    window->Show();
    ServeUntilClosed(*window);
    window->Finish();
}

void Win32Toolkit::ServeUntilClosed(FormWindow& window) const {
    MSG message{};
    while (window.IsOpen()) {
        const BOOL got = ::GetMessageW(&message, nullptr, 0, 0);
        if (got > 0) {
            Serve(message);
            continue;
        }
        if (got == 0) {
            ::PostQuitMessage(static_cast<int>(message.wParam));
        }
        window.Close();
    }
}

void Win32Toolkit::Serve(const MSG& message) const {
    const HWND target = message.hwnd == nullptr ? nullptr : ::GetAncestor(message.hwnd, GA_ROOT);
    for (FormWindow* window : windows_) {
        if (target != nullptr && window->Handle() == target && window->TakeKey(message)) {
            return;
        }
    }
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
}

void Win32Toolkit::ShowMessage(TextView text, forms::MessageStyle style, TextView title) {
    const ControlsContext::Activation activation(controls_);
    const std::wstring heading = title.empty() ? applicationName : platform::ToWide(title);
    ::MessageBoxW(Owner(), platform::ToWide(text).c_str(), heading.c_str(),
                  MB_OK | MB_TASKMODAL | static_cast<UINT>(style));
}

void Win32Toolkit::ShowHelp(TextView file, std::int32_t context) {
    if (!OpenHelp(file, context)) {
        ShowMessage(Text(u"The help file ") + Text(file) + u" cannot be shown.",
                    forms::MessageStyle::Exclamation, u"");
    }
}

// A message to end the thread waits for who serves the thread otherwise.
void Win32Toolkit::DoEvents() {
    MSG message{};
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE) != FALSE) {
        if (message.message == WM_QUIT) {
            ::PostQuitMessage(static_cast<int>(message.wParam));
            return;
        }
        Serve(message);
    }
}

void Win32Toolkit::SetMousePointer(forms::MousePointer pointer) {
    pointer_.SetBusy(pointer == forms::MousePointer::Hourglass);
}

forms::Color Win32Toolkit::Resolve(forms::Color color) const {
    return static_cast<forms::Color>(ResolvedColor(color));
}

forms::Rect Win32Toolkit::ScreenArea() const {
    const Scale scale(DpiOf(nullptr));
    RECT area{};
    ::SystemParametersInfoW(SPI_GETWORKAREA, 0, &area, 0);
    return {scale.TwipsOfX(area.left), scale.TwipsOfY(area.top), scale.TwipsOfX(area.right - area.left),
            scale.TwipsOfY(area.bottom - area.top)};
}

FormWindow* Win32Toolkit::ActiveWindow() const {
    return windows_.empty() ? nullptr : windows_.back();
}

HWND Win32Toolkit::Owner() const {
    if (!windows_.empty()) {
        return windows_.back()->Handle();
    }
    return ::IsWindow(owner_) != FALSE ? ::GetAncestor(owner_, GA_ROOT) : ::GetActiveWindow();
}

}  // namespace lintara::ui::win32
