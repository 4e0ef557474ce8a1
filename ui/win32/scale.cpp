#include "ui/win32/scale.h"

#include <algorithm>
#include <cmath>

namespace lintara::ui::win32 {
namespace {

constexpr double TwipsPerInch = 1440;

double Grown(double scale, forms::Twips twips, LONG needed, double largest) {
    return twips <= 0 ? scale : std::max(scale, std::min(static_cast<double>(needed) / twips, largest));
}

}  // namespace

Scale::Scale(int dpi) : x_(dpi / TwipsPerInch), y_(x_), largestX_(1), largestY_(1) {}

void Scale::GrowToFit(forms::Size twips, SIZE needed) {
    x_ = Grown(x_, twips.width, needed.cx, largestX_);
    y_ = Grown(y_, twips.height, needed.cy, largestY_);
}

void Scale::LimitGrowth(forms::Size form, SIZE screen) {
    largestX_ = std::max(x_, static_cast<double>(screen.cx) / std::max(1, form.width));
    largestY_ = std::max(y_, static_cast<double>(screen.cy) / std::max(1, form.height));
}

RECT Scale::ToPixels(const forms::Rect& place) const {
    return {X(place.left), Y(place.top), X(place.left + place.width), Y(place.top + place.height)};
}

int Scale::Pixels(forms::Twips twips, double scale) {
    return static_cast<int>(std::lround(twips * scale));
}

forms::Twips Scale::ToTwips(int pixels, double scale) {
    return static_cast<forms::Twips>(std::lround(pixels / scale));
}

}  // namespace lintara::ui::win32
