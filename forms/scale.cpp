#include "forms/scale.h"

#include <algorithm>
#include <cmath>

namespace lintara::forms {
namespace {

double Grown(double scale, Twips twips, int needed, double largest) {
    return twips <= 0 ? scale : std::max(scale, std::min(static_cast<double>(needed) / twips, largest));
}

}  // namespace

void Scale::GrowToFit(Size twips, PixelSize needed) {
    x_ = Grown(x_, twips.width, needed.width, largestX_);
    y_ = Grown(y_, twips.height, needed.height, largestY_);
}

void Scale::LimitGrowth(Size form, PixelSize screen) {
    largestX_ = std::max(x_, static_cast<double>(screen.width) / std::max(1, form.width));
    largestY_ = std::max(y_, static_cast<double>(screen.height) / std::max(1, form.height));
}

int Scale::ToPixels(Twips twips, double scale) {
    return static_cast<int>(std::lround(twips * scale));
}

Twips Scale::ToTwips(int pixels, double scale) {
    return static_cast<Twips>(std::lround(pixels / scale));
}

}  // namespace lintara::forms
