// Objects of the system's drawing that are released when their owner goes.
#pragma once

#include "ui/win32/windows_headers.h"

#include <memory>
#include <type_traits>

namespace lintara::ui::win32 {

struct GdiDeleter {
    void operator()(HGDIOBJ object) const { ::DeleteObject(object); }
};
using UniqueFont = std::unique_ptr<std::remove_pointer_t<HFONT>, GdiDeleter>;
using UniqueBrush = std::unique_ptr<std::remove_pointer_t<HBRUSH>, GdiDeleter>;
using UniquePen = std::unique_ptr<std::remove_pointer_t<HPEN>, GdiDeleter>;

// The device context of a window, for measuring.
class WindowDc {
  public:
    explicit WindowDc(HWND window) : window_(window), dc_(::GetDC(window)) {}
    ~WindowDc() { ::ReleaseDC(window_, dc_); }
    WindowDc(const WindowDc&) = delete;
    WindowDc& operator=(const WindowDc&) = delete;

    [[nodiscard]] HDC get() const { return dc_; }

  private:
    HWND window_;
    HDC dc_;
};

// An object that is selected into a device context, until the end of the block.
class Selected {
  public:
    Selected(HDC dc, HGDIOBJ object) : dc_(dc), before_(::SelectObject(dc, object)) {}
    ~Selected() { ::SelectObject(dc_, before_); }
    Selected(const Selected&) = delete;
    Selected& operator=(const Selected&) = delete;

  private:
    HDC dc_;
    HGDIOBJ before_;
};

}  // namespace lintara::ui::win32
