#include "ui/qt/scale.h"

#include <QFontMetricsF>
#include <algorithm>
#include <cmath>

namespace lintara::ui {
namespace {

// The letters of the font that forms are designed for, in pixels.
constexpr double DesignedLetterWidth = 5.75;
constexpr double DesignedLetterHeight = 13;

double LetterWidthOf(const QFontMetricsF& metrics) {
    const QString letters = QStringLiteral("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ");
    return metrics.horizontalAdvance(letters) / static_cast<double>(letters.size());
}

double Grown(double scale, forms::Twips twips, int needed, double largest) {
    return twips <= 0 ? scale : std::max(scale, std::min(static_cast<double>(needed) / twips, largest));
}

}  // namespace

Scale::Scale(const QFont& font) {
    const QFontMetricsF metrics(font);
    x_ = Designed * std::max(1.0, LetterWidthOf(metrics) / DesignedLetterWidth);
    y_ = Designed * std::max(1.0, metrics.height() / DesignedLetterHeight);
}

void Scale::GrowToFit(forms::Size twips, QSize needed) {
    x_ = Grown(x_, twips.width, needed.width(), largestX_);
    y_ = Grown(y_, twips.height, needed.height(), largestY_);
}

void Scale::LimitGrowth(forms::Size form, QSize screen) {
    largestX_ = std::max(x_, static_cast<double>(screen.width()) / std::max(1, form.width));
    largestY_ = std::max(y_, static_cast<double>(screen.height()) / std::max(1, form.height));
}

QRect Scale::ToPixels(const forms::Rect& place) const {
    const int left = X(place.left);
    const int top = Y(place.top);
    return {left, top, X(place.left + place.width) - left, Y(place.top + place.height) - top};
}

int Scale::Pixels(forms::Twips twips, double scale) {
    return static_cast<int>(std::lround(twips * scale));
}

forms::Twips Scale::ToTwips(int pixels, double scale) {
    return static_cast<forms::Twips>(std::lround(pixels / scale));
}

}  // namespace lintara::ui
