#include "ui/qt/drawings.h"

#include "forms/control_visitor.h"
#include "forms/drawing.h"
#include "ui/qt/system_colors.h"

#include <QPainter>
#include <algorithm>

namespace lintara::ui {
namespace {

using forms::Twips;
using forms::TwipsPerPixel;

// The way from twips to the dots of the screen in one direction. A line is of the same number of dots
// wherever it stands, and so is its distance from an edge of the container that is near: the two rings of a
// frame touch.
class Axis {
  public:
    // The container's edges on the screen, in dots, its extent, and the dots of a twip.
    Axis(double near, double far, Twips extent, double scale)
        : exactNear_(near),
          near_(qRound(near)),
          far_(qRound(far)),
          extent_(extent),
          scale_(scale),
          thickness_(std::max(1, qRound(TwipsPerPixel * scale))) {}

    [[nodiscard]] int thickness() const { return thickness_; }

    [[nodiscard]] int Dot(Twips position) const {
        if (IsAtAnEdge(position)) {
            return near_ + position / TwipsPerPixel * thickness_;
        }
        if (IsAtAnEdge(extent_ - position)) {
            return far_ - (extent_ - position) / TwipsPerPixel * thickness_;
        }
        return qRound(exactNear_ + position * scale_);
    }

  private:
    [[nodiscard]] static bool IsAtAnEdge(Twips distance) {
        constexpr Twips closest = 4 * TwipsPerPixel;
        return distance >= 0 && distance <= closest && distance % TwipsPerPixel == 0;
    }

    double exactNear_;
    int near_;
    int far_;
    Twips extent_;
    double scale_;
    int thickness_;
};

class DrawingPainter {
  public:
    DrawingPainter(QPainter& painter, const forms::Container& container, const Scale& scale,
                   const QWidget& widget)
        : painter_(painter),
          palette_(widget.palette()),
          toDevice_(painter.deviceTransform()),
          edges_(toDevice_.mapRect(QRectF(widget.rect()))),
          x_(edges_.left(), edges_.right(), container.Width(), scale.PreciseX(1) * toDevice_.m11()),
          y_(edges_.top(), edges_.bottom(), container.Height(), scale.PreciseY(1) * toDevice_.m22()) {}

    void Paint(const forms::LineControl& line) {
        const forms::Segment& ends = line.Ends();
        const QColor color = ResolvedColor(line.BorderColor(), palette_);
        const QPoint from(x_.Dot(std::min(ends.x1, ends.x2)), y_.Dot(std::min(ends.y1, ends.y2)));
        const QPoint to(x_.Dot(std::max(ends.x1, ends.x2)), y_.Dot(std::max(ends.y1, ends.y2)));
        if (ends.y1 == ends.y2) {
            Fill(QRect(from, QSize(to.x() - from.x(), y_.thickness())), color);
        } else if (ends.x1 == ends.x2) {
            Fill(QRect(from, QSize(x_.thickness(), to.y() - from.y())), color);
        } else {
            const QPointF start = FromDots(QPointF(x_.Dot(ends.x1), y_.Dot(ends.y1)));
            const QPointF end = FromDots(QPointF(x_.Dot(ends.x2), y_.Dot(ends.y2)));
            painter_.setRenderHint(QPainter::Antialiasing);
            painter_.setPen(color);
            painter_.drawLine(start, end);
            painter_.setRenderHint(QPainter::Antialiasing, false);
        }
    }

    void Paint(const forms::Shape& shape) {
        const forms::Rect& place = shape.Place();
        const QPoint from(x_.Dot(place.left), y_.Dot(place.top));
        const QPoint to(x_.Dot(place.left + place.width), y_.Dot(place.top + place.height));
        const QRect outline(from, QSize(to.x() - from.x(), to.y() - from.y()));
        Fill(outline, ResolvedColor(shape.BorderColor(), palette_));
        Fill(outline.adjusted(x_.thickness(), y_.thickness(), -x_.thickness(), -y_.thickness()),
             ResolvedColor(shape.FillColor(), palette_));
    }

  private:
    QPointF FromDots(const QPointF& dots) const { return toDevice_.inverted().map(dots); }

    void Fill(const QRect& dots, const QColor& color) {
        if (dots.isValid()) {
            painter_.fillRect(toDevice_.inverted().mapRect(QRectF(dots)), color);
        }
    }

    QPainter& painter_;
    const QPalette& palette_;
    QTransform toDevice_;
    QRectF edges_;
    Axis x_;
    Axis y_;
};

}  // namespace

void PaintDrawings(QWidget& widget, const forms::Container& container, const Scale& scale) {
    QPainter painter(&widget);
    DrawingPainter drawings(painter, container, scale, widget);
    for (const forms::Control* control : container.Controls()) {
        if (!control->Visible()) {
            continue;
        }
        if (const auto* line = dynamic_cast<const forms::LineControl*>(control)) {
            drawings.Paint(*line);
        } else if (const auto* shape = dynamic_cast<const forms::Shape*>(control)) {
            drawings.Paint(*shape);
        }
    }
}

ContainerView::ContainerView(QWidget* parent, forms::Container& container, const Scale& scale)
    : QWidget(parent), container_(container), scale_(scale) {
    UpdateLook();
}

void ContainerView::Update(forms::Property property) {
    if (property == forms::Property::Colors) {
        UpdateLook();
    }
}

void ContainerView::UpdateLook() {
    const auto* surface = dynamic_cast<const forms::UserControl*>(&container_);
    const bool isOpaque = surface != nullptr && surface->BackStyle() == 1;
    setAutoFillBackground(isOpaque);
    if (isOpaque) {
        QPalette colors;
        colors.setColor(QPalette::Window, ResolvedColor(surface->BackColor(), QPalette()));
        setPalette(colors);
    }
    update();
}

void ContainerView::paintEvent(QPaintEvent* /*event*/) {
    PaintDrawings(*this, container_, scale_);
}

}  // namespace lintara::ui
