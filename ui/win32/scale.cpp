#include "ui/win32/scale.h"

namespace lintara::ui::win32 {
namespace {

constexpr double TwipsPerInch = 1440;

}  // namespace

Scale::Scale(int dpi) : forms::Scale(dpi / TwipsPerInch, dpi / TwipsPerInch) {}

RECT Scale::ToPixels(const forms::Rect& place) const {
    return {X(place.left), Y(place.top), X(place.left + place.width), Y(place.top + place.height)};
}

}  // namespace lintara::ui::win32
