#include "forms/container.h"

#include "forms/control_visitor.h"

namespace lintara::forms {

void Frame::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

void UserControl::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

void UserControl::SetBackColor(Color color) {
    if (color != backColor_) {
        backColor_ = color;
        Tell(Property::Colors);
    }
}

Result<void> UserControl::SetBackStyle(std::int16_t style) {
    if (style != 0 && style != 1) {
        return Failure(ErrorNumber::InvalidArgument, "a background is transparent, 0, or opaque, 1");
    }
    if (style != backStyle_) {
        backStyle_ = style;
        Tell(Property::Colors);
    }
    return {};
}

}  // namespace lintara::forms
