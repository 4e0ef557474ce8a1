// From the twips of a form to the pixels of its window: a fifteenth of the pixels at 96 dots per inch, more
// on a denser screen. Where the letters of the screen's fonts are larger than designed, all of the form is
// shown larger, as much as its captions need.
#pragma once

#include "forms/scale.h"
#include "ui/win32/windows_headers.h"

namespace lintara::ui::win32 {

class Scale : public forms::Scale {
  public:
    explicit Scale(int dpi);

    [[nodiscard]] SIZE ToPixels(forms::Size size) const { return {X(size.width), Y(size.height)}; }
    // Neighbours that touch in twips touch in pixels.
    [[nodiscard]] RECT ToPixels(const forms::Rect& place) const;
};

[[nodiscard]] inline forms::PixelSize PixelsOf(SIZE size) {
    return {.width = static_cast<int>(size.cx), .height = static_cast<int>(size.cy)};
}

}  // namespace lintara::ui::win32
