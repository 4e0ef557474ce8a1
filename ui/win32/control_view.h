// A system control that shows a control of a form. The window (form_window.h) places it, shows and hides it,
// enables it and gives it the focus and its font; the rest of what a control can show is its view's own.
#pragma once

#include "forms/control.h"
#include "ui/win32/view_context.h"
#include "ui/win32/windows_headers.h"

#include <string>

namespace lintara::ui::win32 {

class ControlView {
  public:
    virtual ~ControlView();
    ControlView(const ControlView&) = delete;
    ControlView& operator=(const ControlView&) = delete;

    [[nodiscard]] HWND Handle() const { return handle_; }
    [[nodiscard]] forms::Control& Control() const { return control_; }

    // Shows what `property` of the control is now. Only what differs is touched.
    virtual void Update(forms::Property property) = 0;

    // The size in pixels that it takes to show what does not change with the user's work, such as a caption.
    // A width or height of 0 is for those that can do with any.
    [[nodiscard]] virtual SIZE NeededSize() const { return {}; }

    // The control has told its parent something, by WM_COMMAND or WM_NOTIFY. The result is the message's.
    virtual void Command(WORD /*code*/) {}
    virtual LRESULT Notify(NMHDR& /*header*/) { return 0; }

    // Whether it lies on a shape that is its background, of the color of windows.
    [[nodiscard]] virtual bool LiesOnShape() const { return false; }

    // Where it goes in the place that the form gives it, in pixels of its parent.
    [[nodiscard]] virtual RECT PlaceIn(const RECT& given) const { return given; }

    // The font and density in the context are others now.
    virtual void FontChanged();

  protected:
    struct Style {
        const wchar_t* windowClass = L"";
        DWORD style = 0;
        DWORD extendedStyle = 0;
    };

    // Throws std::system_error when the system has no window left.
    ControlView(ViewContext& context, HWND parent, forms::Control& control, const Style& style,
                const std::wstring& text);

    // A message to the system control.
    virtual LRESULT Receive(UINT message, WPARAM wParam, LPARAM lParam) {
        return Default(message, wParam, lParam);
    }
    // What the system control does with it.
    LRESULT Default(UINT message, WPARAM wParam, LPARAM lParam) {
        return ::DefSubclassProc(handle_, message, wParam, lParam);
    }
    LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
        return ::SendMessageW(handle_, message, wParam, lParam);
    }

    [[nodiscard]] ViewContext& Context() const { return context_; }
    [[nodiscard]] bool IsMirroring() const { return context_.gate.IsMirroring(); }
    [[nodiscard]] HFONT FontInUse() const { return context_.fonts.Get(control_.font); }
    // Pixels of a length that is designed for 96 dots per inch.
    [[nodiscard]] int Dots(int designed) const;

  private:
    static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam, UINT_PTR id,
                                      DWORD_PTR view) noexcept;
    LRESULT ReceiveWithFocus(UINT message, WPARAM wParam, LPARAM lParam);

    ViewContext& context_;
    forms::Control& control_;
    HWND handle_ = nullptr;
};

}  // namespace lintara::ui::win32
