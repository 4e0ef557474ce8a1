#include "ui/win32/drawings.h"

#include "forms/drawing.h"
#include "ui/win32/handles.h"
#include "ui/win32/system_colors.h"

#include <algorithm>
#include <cmath>

namespace lintara::ui::win32 {
namespace {

using forms::Twips;
using forms::TwipsPerPixel;

// The way from twips to pixels in one direction.
class Axis {
  public:
    // The container's edges in pixels, its extent, and the pixels of a twip.
    Axis(int start, int end, Twips extent, double scale)
        : start_(start),
          end_(end),
          extent_(extent),
          scale_(scale),
          thickness_(std::max(1, static_cast<int>(std::lround(TwipsPerPixel * scale)))) {}

    [[nodiscard]] int thickness() const { return thickness_; }

    [[nodiscard]] int Dot(Twips position) const {
        if (IsAtAnEdge(position)) {
            return start_ + position / TwipsPerPixel * thickness_;
        }
        if (IsAtAnEdge(extent_ - position)) {
            return end_ - (extent_ - position) / TwipsPerPixel * thickness_;
        }
        return start_ + static_cast<int>(std::lround(position * scale_));
    }

  private:
    [[nodiscard]] static bool IsAtAnEdge(Twips distance) {
        constexpr Twips closest = 4 * TwipsPerPixel;
        return distance >= 0 && distance <= closest && distance % TwipsPerPixel == 0;
    }

    int start_;
    int end_;
    Twips extent_;
    double scale_;
    int thickness_;
};

class Painter {
  public:
    Painter(HDC dc, const RECT& inside, const forms::Container& container, const Scale& scale)
        : dc_(dc),
          x_(inside.left, inside.right, container.Width(), scale.PreciseX(1)),
          y_(inside.top, inside.bottom, container.Height(), scale.PreciseY(1)) {}

    void Paint(const forms::LineControl& line) const {
        const forms::Segment& ends = line.Ends();
        const COLORREF color = ResolvedColor(line.BorderColor());
        const int left = x_.Dot(std::min(ends.x1, ends.x2));
        const int top = y_.Dot(std::min(ends.y1, ends.y2));
        if (ends.y1 == ends.y2) {
            Fill({left, top, x_.Dot(std::max(ends.x1, ends.x2)), top + y_.thickness()}, color);
        } else if (ends.x1 == ends.x2) {
            Fill({left, top, left + x_.thickness(), y_.Dot(std::max(ends.y1, ends.y2))}, color);
        } else {
            const UniquePen pen(::CreatePen(PS_SOLID, x_.thickness(), color));
            const Selected selected(dc_, pen.get());
            ::MoveToEx(dc_, x_.Dot(ends.x1), y_.Dot(ends.y1), nullptr);
            ::LineTo(dc_, x_.Dot(ends.x2), y_.Dot(ends.y2));
        }
    }

    void Paint(const forms::Shape& shape) const {
        const forms::Rect& place = shape.Place();
        const RECT outline{x_.Dot(place.left), y_.Dot(place.top), x_.Dot(place.left + place.width),
                           y_.Dot(place.top + place.height)};
        RECT inner = outline;
        ::InflateRect(&inner, -x_.thickness(), -y_.thickness());
        Fill(outline, ResolvedColor(shape.BorderColor()));
        Fill(inner, ResolvedColor(shape.FillColor()));
    }

  private:
    void Fill(const RECT& place, COLORREF color) const {
        const UniqueBrush brush(::CreateSolidBrush(color));
        ::FillRect(dc_, &place, brush.get());
    }

    HDC dc_;
    Axis x_;
    Axis y_;
};

}  // namespace

void PaintDrawings(HDC dc, const RECT& inside, const forms::Container& container, const Scale& scale) {
    const Painter painter(dc, inside, container, scale);
    for (const forms::Control* control : container.Controls()) {
        if (!control->Visible()) {
            continue;
        }
        if (const auto* line = dynamic_cast<const forms::LineControl*>(control)) {
            painter.Paint(*line);
        } else if (const auto* shape = dynamic_cast<const forms::Shape*>(control)) {
            painter.Paint(*shape);
        }
    }
}

}  // namespace lintara::ui::win32
