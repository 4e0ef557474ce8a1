#include "forms/buttons.h"

#include "base/statement.h"
#include "forms/control_visitor.h"
#include "forms/form.h"

namespace lintara::forms {

void CommandButton::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

void CommandButton::Press() {
    if (Usable()) {
        Click.Raise();
    }
}

void CheckBox::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

Result<void> CheckBox::SetValue(std::int16_t value) {
    if (value < Unchecked || value > Grayed) {
        return Failure(ErrorNumber::InvalidArgument, "a check box has the values 0, 1 and 2");
    }
    if (value != value_) {
        value_ = value;
        Tell(Property::Value);
        Click.Raise();
    }
    return {};
}

void CheckBox::Toggle() {
    if (Usable()) {
        Attempt(SetValue(value_ == Unchecked ? Checked : Unchecked));
    }
}

void OptionButton::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

void OptionButton::SetValue(bool value) {
    if (value == value_) {
        return;
    }
    if (value) {
        for (Control* neighbour : Parent()->Controls()) {
            auto* option = dynamic_cast<OptionButton*>(neighbour);
            if (option != nullptr) {
                option->SetValue(false);
            }
        }
    }
    value_ = value;
    Tell(Property::Value);
    if (value) {
        Click.Raise();
    }
}

void OptionButton::Select() {
    if (Usable()) {
        SetValue(true);
    }
}

}  // namespace lintara::forms
