// The classes of our own windows: that of forms and that of the containers in them. Their behaviour is not
// the classes', so that one that outlives the library refers to nothing in it.
#pragma once

#include "ui/win32/windows_headers.h"

namespace lintara::ui::win32 {

class WindowClasses {
  public:
    static constexpr const wchar_t* Form = L"TarnwickLintaraForm";
    static constexpr const wchar_t* Surface = L"TarnwickLintaraSurface";

    // Registers those that are not.
    explicit WindowClasses(HINSTANCE module);
    // Takes them away, unless there are windows of them.
    ~WindowClasses();
    WindowClasses(const WindowClasses&) = delete;
    WindowClasses& operator=(const WindowClasses&) = delete;

  private:
    HINSTANCE module_;
};

}  // namespace lintara::ui::win32
