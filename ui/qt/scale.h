// From the twips of a form to the pixels of its window. A form was designed for the platform's small dialog
// font; a desktop with larger letters shows all of it larger, as much as its letters are wider and higher.
// Pixels are the desktop's logical ones: what becomes of them on a screen of high density is Qt's affair.
#pragma once

#include "forms/scale.h"

#include <QRect>
#include <QSize>

class QFont;

namespace lintara::ui {

class Scale : public forms::Scale {
  public:
    // That of the design: a pixel for fifteen twips.
    Scale();
    // That for texts in `font`.
    explicit Scale(const QFont& font);

    [[nodiscard]] QSize ToPixels(forms::Size size) const { return {X(size.width), Y(size.height)}; }
    // Neighbours that touch in twips touch in pixels.
    [[nodiscard]] QRect ToPixels(const forms::Rect& place) const;
};

[[nodiscard]] inline forms::PixelSize PixelsOf(QSize size) {
    return {.width = size.width(), .height = size.height()};
}

}  // namespace lintara::ui
