// Colours of forms on this desktop, of light and of dark themes.
#pragma once

#include "forms/color.h"

#include <QColor>

class QPalette;

namespace lintara::ui {

// A system colour is that of the palette which has the same purpose.
[[nodiscard]] QColor ResolvedColor(forms::Color color, const QPalette& palette);

// `color`, made lighter or darker as far as need be to be read on `background`: themes choose the colour of
// selections as a background for text, not as a colour of text.
[[nodiscard]] QColor ReadableColor(const QColor& color, const QColor& background);

}  // namespace lintara::ui
