#include "ui/qt/system_colors.h"

#include <QPalette>
#include <algorithm>
#include <cmath>

namespace lintara::ui {
namespace {

using forms::Color;

QColor PlainColor(Color color) {
    const auto bits = static_cast<std::uint32_t>(color);
    return QColor::fromRgb(static_cast<int>(bits & 0xFFU), static_cast<int>(bits >> 8U & 0xFFU),
                           static_cast<int>(bits >> 16U & 0xFFU));
}

double LinearLight(double channel) {
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double LuminanceOf(const QColor& color) {
    return 0.2126 * LinearLight(color.redF()) + 0.7152 * LinearLight(color.greenF()) +
           0.0722 * LinearLight(color.blueF());
}

// From 1 for equal colours to 21 for black on white.
double ContrastOf(const QColor& one, const QColor& other) {
    const double a = LuminanceOf(one);
    const double b = LuminanceOf(other);
    return (std::max(a, b) + 0.05) / (std::min(a, b) + 0.05);
}

}  // namespace

QColor ResolvedColor(Color color, const QPalette& palette) {
    if (!forms::IsSystemColor(color)) {
        return PlainColor(color);
    }
    switch (color) {
        case Color::WindowBackground:
            return palette.color(QPalette::Base);
        case Color::WindowText:
            return palette.color(QPalette::Text);
        case Color::Highlight:
            return palette.color(QPalette::Highlight);
        case Color::ButtonShadow:
            return palette.color(QPalette::Dark);
        case Color::GrayText:
            return palette.color(QPalette::Disabled, QPalette::Text);
        case Color::ButtonText:
            return palette.color(QPalette::ButtonText);
        case Color::ButtonHighlight:
            return palette.color(QPalette::Light);
        default:
            return palette.color(QPalette::Window);
    }
}

QColor ReadableColor(const QColor& color, const QColor& background) {
    constexpr double enough = 4.5;
    constexpr int steps = 20;
    const QColor goal = LuminanceOf(background) < 0.18 ? Qt::white : Qt::black;
    QColor result = color;
    for (int step = 1; step <= steps && ContrastOf(result, background) < enough; ++step) {
        const float part = static_cast<float>(step) / steps;
        result = QColor::fromRgbF(color.redF() + (goal.redF() - color.redF()) * part,
                                  color.greenF() + (goal.greenF() - color.greenF()) * part,
                                  color.blueF() + (goal.blueF() - color.blueF()) * part);
    }
    return result;
}

}  // namespace lintara::ui
