#include "forms/drawing.h"

#include "forms/control_visitor.h"

namespace lintara::forms {

void LineControl::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

void LineControl::SetEnds(const Segment& ends) {
    if (ends != ends_) {
        ends_ = ends;
        Tell(Property::Segment);
    }
}

void LineControl::SetBorderColor(Color color) {
    if (color != color_) {
        color_ = color;
        Tell(Property::Colors);
    }
}

void Shape::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

}  // namespace lintara::forms
