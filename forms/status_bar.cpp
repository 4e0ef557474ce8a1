#include "forms/status_bar.h"

#include "forms/control_visitor.h"

namespace lintara::forms {

void StatusBar::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

void StatusBar::SetSimpleText(TextView text) {
    if (text != text_) {
        text_ = text;
        Tell(Property::Text);
    }
}

}  // namespace lintara::forms
