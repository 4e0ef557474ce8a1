#include "forms/label.h"

#include "forms/control_visitor.h"

namespace lintara::forms {

void Label::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

void Label::SetCaption(TextView caption) {
    if (caption != caption_) {
        caption_ = caption;
        Tell(Property::Caption);
    }
}

}  // namespace lintara::forms
