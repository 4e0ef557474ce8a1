// The window of a form while it is shown: the system controls of its controls, kept like these, and the
// user's work handed to them.
//
// Which control has the keyboard, and what Tab, Enter, Esc and the access keys do, is decided by the form
// (forms/keyboard.h); the system's own rules for these keys are not used.
#pragma once

#include "forms/form.h"
#include "forms/mirror.h"
#include "ui/win32/modal_block.h"
#include "ui/win32/pointer.h"
#include "ui/win32/surface.h"
#include "ui/win32/view_context.h"
#include "ui/win32/view_maker.h"

#include <optional>

namespace lintara::ui::win32 {

class FormWindow final : public forms::Mirror {
  public:
    // The form and the pointer outlive the window. `owner` is the window that it stands in front of; null for
    // none. Throws std::system_error when the system has no window left.
    FormWindow(HINSTANCE module, forms::Form& form, HWND owner, const Pointer& pointer);
    ~FormWindow() override;
    FormWindow(const FormWindow&) = delete;
    FormWindow& operator=(const FormWindow&) = delete;

    // Shows it, and keeps the user from the thread's other windows until the form is hidden.
    void Show();
    // Whether the user is to be served still. Becomes false when the form is hidden, and when a handler of
    // the form has thrown something, which Finish then throws again.
    [[nodiscard]] bool IsOpen() const { return form_.Visible() && context_.failure == nullptr; }
    void Finish();
    // Does what the close box does.
    void Close() { form_.Unload(); }

    // Whether the message is a key of the form's own. Then its work is done.
    [[nodiscard]] bool TakeKey(const MSG& message) noexcept;

    void Changed(forms::Control& control, forms::Property property) override;

    [[nodiscard]] HWND Handle() const { return handle_; }
    // The system control of a control; null for those without.
    [[nodiscard]] HWND HandleOf(const forms::Control& control) const;
    [[nodiscard]] const Scale& scale() const { return context_.scale; }

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                      DWORD_PTR self) noexcept;
    LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam);
    LRESULT ReceiveForWindow(UINT message, WPARAM wParam, LPARAM lParam);

    void MakeControls();
    void SetHandles(bool shown);
    void ApplyFonts();
    void ChooseScale();
    void PlaceAll();
    void PlaceControl(forms::Control& control);
    void PlaceWithContents(forms::Control& control);
    void PlaceWindow();
    void PlaceOnScreen();
    [[nodiscard]] SIZE OuterSize(SIZE inside) const;
    [[nodiscard]] SIZE RoomForInside() const;

    void Disappear();
    void UpdateForm(forms::Property property);
    void UpdateControl(forms::Control& control, ControlView& view, forms::Property property);
    void UpdateCaption();
    void RepaintAround(const forms::Control& control);
    void ShowFocus();
    void ShowDefaultButton();

    void TakePlace();
    void TakeMinimum(MINMAXINFO& info) const;
    void TakeDpi(int dpi, const RECT& suggested);
    void TakeColors(UINT message, WPARAM wParam, LPARAM lParam);
    void TakeEnd();

    forms::Form& form_;
    const Pointer& pointer_;
    ViewContext context_;
    Surface surface_;
    HWND handle_ = nullptr;
    Views views_;
    std::optional<ModalBlock> block_;
    HWND activeBefore_ = nullptr;
    HWND focusBefore_ = nullptr;
};

}  // namespace lintara::ui::win32
