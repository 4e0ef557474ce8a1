// From the twips of a form to the pixels of its window. A form was designed for the platform's small dialog
// font; a desktop with larger letters shows all of it larger, as much as its letters are wider and higher.
// Pixels are the desktop's logical ones: what becomes of them on a screen of high density is Qt's affair.
#pragma once

#include "forms/geometry.h"

#include <QRect>
#include <QSize>

class QFont;

namespace lintara::ui {

class Scale {
  public:
    // That of the design: a pixel for fifteen twips.
    Scale() = default;
    // That for texts in `font`.
    explicit Scale(const QFont& font);

    // Makes it so large that `twips` become `needed` pixels at least.
    void GrowToFit(forms::Size twips, QSize needed);
    // Limits how far it grows from now on: a form of that size is to fit on a screen of that many pixels. A
    // screen that is too small already limits it to what it is.
    void LimitGrowth(forms::Size form, QSize screen);

    [[nodiscard]] int X(forms::Twips twips) const { return Pixels(twips, x_); }
    [[nodiscard]] int Y(forms::Twips twips) const { return Pixels(twips, y_); }
    [[nodiscard]] double PreciseX(forms::Twips twips) const { return twips * x_; }
    [[nodiscard]] double PreciseY(forms::Twips twips) const { return twips * y_; }
    [[nodiscard]] QSize ToPixels(forms::Size size) const { return {X(size.width), Y(size.height)}; }
    // Neighbours that touch in twips touch in pixels.
    [[nodiscard]] QRect ToPixels(const forms::Rect& place) const;

    // The way back: to the same pixels again.
    [[nodiscard]] forms::Twips TwipsOfX(int pixels) const { return ToTwips(pixels, x_); }
    [[nodiscard]] forms::Twips TwipsOfY(int pixels) const { return ToTwips(pixels, y_); }

    friend bool operator==(const Scale&, const Scale&) = default;

  private:
    static constexpr double Designed = 1.0 / forms::TwipsPerPixel;

    [[nodiscard]] static int Pixels(forms::Twips twips, double scale);
    [[nodiscard]] static forms::Twips ToTwips(int pixels, double scale);

    // Pixels of a twip.
    double x_ = Designed;
    double y_ = Designed;
    double largestX_ = 1;
    double largestY_ = 1;
};

}  // namespace lintara::ui
