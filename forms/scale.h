// From the twips of a form to the pixels of its window, and back.
#pragma once

#include "forms/geometry.h"

namespace lintara::forms {

// In pixels.
struct PixelSize {
    int width = 0;
    int height = 0;
};

class Scale {
  public:
    // `x` and `y` are the pixels of a twip; 1.0 / TwipsPerPixel is what forms are designed for.
    Scale(double x, double y) : x_(x), y_(y) {}

    // Makes it so large that `twips` become `needed` pixels at least.
    void GrowToFit(Size twips, PixelSize needed);
    // Limits how far it grows from now on: a form of that size is to fit on a screen of that many pixels. A
    // screen that is too small already limits it to what it is.
    void LimitGrowth(Size form, PixelSize screen);

    [[nodiscard]] int X(Twips twips) const { return ToPixels(twips, x_); }
    [[nodiscard]] int Y(Twips twips) const { return ToPixels(twips, y_); }
    [[nodiscard]] double PreciseX(Twips twips) const { return twips * x_; }
    [[nodiscard]] double PreciseY(Twips twips) const { return twips * y_; }

    // The way back: to the same pixels again.
    [[nodiscard]] Twips TwipsOfX(int pixels) const { return ToTwips(pixels, x_); }
    [[nodiscard]] Twips TwipsOfY(int pixels) const { return ToTwips(pixels, y_); }

    friend bool operator==(const Scale&, const Scale&) = default;

  private:
    [[nodiscard]] static int ToPixels(Twips twips, double scale);
    [[nodiscard]] static Twips ToTwips(int pixels, double scale);

    double x_;
    double y_;
    double largestX_ = 1;
    double largestY_ = 1;
};

}  // namespace lintara::forms
