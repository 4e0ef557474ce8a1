// Forms shown by the system's own controls. To be used from one thread only, which need not serve messages
// otherwise.
#pragma once

#include "forms/geometry.h"
#include "forms/toolkit.h"
#include "ui/win32/controls_context.h"
#include "ui/win32/pointer.h"
#include "ui/win32/window_classes.h"
#include "ui/win32/windows_headers.h"

#include <vector>

namespace lintara::ui::win32 {

class FormWindow;

class Win32Toolkit final : public forms::Toolkit {
  public:
    // `module` is the library or program that this code is part of. Windows stand in front of `owner` or,
    // when it is null, of the window of this thread that is active when a form is shown.
    explicit Win32Toolkit(HINSTANCE module, HWND owner = nullptr);
    ~Win32Toolkit() override;
    Win32Toolkit(const Win32Toolkit&) = delete;
    Win32Toolkit& operator=(const Win32Toolkit&) = delete;

    // Meanwhile the user cannot use the thread's other windows. A message to end the thread closes the form
    // and stays in the queue. Throws what the form's handlers throw, and std::system_error when the system
    // has no window left; the form is hidden then.
    void RunModal(forms::Form& form) override;
    void ShowMessage(TextView text, forms::MessageStyle style, TextView title) override;
    // A file that cannot be shown is told in a message.
    void ShowHelp(TextView file, std::int32_t context) override;
    void DoEvents() override;
    void SetMousePointer(forms::MousePointer pointer) override;
    [[nodiscard]] forms::Color Resolve(forms::Color color) const override;

    // The part of the screens where windows can be, in twips.
    [[nodiscard]] forms::Rect ScreenArea() const;

    // The window of the form that the user is working with; null when none is shown.
    [[nodiscard]] FormWindow* ActiveWindow() const;

  private:
    [[nodiscard]] HWND Owner() const;
    void Serve(const MSG& message) const;
    void ServeUntilClosed(FormWindow& window) const;

    HINSTANCE module_;
    HWND owner_;
    WindowClasses classes_;
    ControlsContext controls_;
    Pointer pointer_;
    std::vector<FormWindow*> windows_;
};

}  // namespace lintara::ui::win32
