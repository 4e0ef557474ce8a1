#include "ui/qt/scale.h"

#include <QFontMetricsF>
#include <algorithm>

namespace lintara::ui {
namespace {

constexpr double Designed = 1.0 / forms::TwipsPerPixel;

// The letters of the font that forms are designed for, in pixels.
constexpr double DesignedLetterWidth = 5.75;
constexpr double DesignedLetterHeight = 13;

double LetterWidthOf(const QFontMetricsF& metrics) {
    const QString letters = QStringLiteral("abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ");
    return metrics.horizontalAdvance(letters) / static_cast<double>(letters.size());
}

forms::Scale ScaleOf(const QFontMetricsF& metrics) {
    return {Designed * std::max(1.0, LetterWidthOf(metrics) / DesignedLetterWidth),
            Designed * std::max(1.0, metrics.height() / DesignedLetterHeight)};
}

}  // namespace

Scale::Scale() : forms::Scale(Designed, Designed) {}

Scale::Scale(const QFont& font) : forms::Scale(ScaleOf(QFontMetricsF(font))) {}

QRect Scale::ToPixels(const forms::Rect& place) const {
    const int left = X(place.left);
    const int top = Y(place.top);
    return {left, top, X(place.left + place.width) - left, Y(place.top + place.height) - top};
}

}  // namespace lintara::ui
