// From the twips of a form to the pixels of its window: a fifteenth of the pixels at 96 dots per inch, more
// on a denser screen. Where the letters of the screen's fonts are larger than designed, all of the form is
// shown larger, as much as its captions need.
#pragma once

#include "forms/geometry.h"
#include "ui/win32/windows_headers.h"

namespace lintara::ui::win32 {

class Scale {
  public:
    explicit Scale(int dpi);

    // Makes it so large that `twips` become `needed` pixels at least.
    void GrowToFit(forms::Size twips, SIZE needed);
    // Limits how far it grows from now on: a form of that size is to fit on a screen of that many pixels. A
    // screen that is too small already limits it to what it is.
    void LimitGrowth(forms::Size form, SIZE screen);

    [[nodiscard]] int X(forms::Twips twips) const { return Pixels(twips, x_); }
    [[nodiscard]] int Y(forms::Twips twips) const { return Pixels(twips, y_); }
    [[nodiscard]] double PreciseX() const { return x_; }
    [[nodiscard]] double PreciseY() const { return y_; }
    [[nodiscard]] SIZE ToPixels(forms::Size size) const { return {X(size.width), Y(size.height)}; }
    // Neighbours that touch in twips touch in pixels.
    [[nodiscard]] RECT ToPixels(const forms::Rect& place) const;

    // The way back: to the same pixels again.
    [[nodiscard]] forms::Twips TwipsOfX(int pixels) const { return ToTwips(pixels, x_); }
    [[nodiscard]] forms::Twips TwipsOfY(int pixels) const { return ToTwips(pixels, y_); }

    friend bool operator==(const Scale&, const Scale&) = default;

  private:
    [[nodiscard]] static int Pixels(forms::Twips twips, double scale);
    [[nodiscard]] static forms::Twips ToTwips(int pixels, double scale);

    // Pixels of a twip.
    double x_;
    double y_;
    double largestX_;
    double largestY_;
};

}  // namespace lintara::ui::win32
