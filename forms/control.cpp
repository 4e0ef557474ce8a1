#include "forms/control.h"

#include "forms/container.h"
#include "forms/form.h"

#include <algorithm>

namespace lintara::forms {

Control::Control(Container& container, TextView name, const Rect& place)
    : parent_(&container), name_(name), place_(place) {
    container.controls_.push_back(this);
}

Control::Control(TextView name) : name_(name), visible_(false) {}

Control::~Control() {
    if (parent_ != nullptr) {
        std::erase(parent_->controls_, this);
    }
}

// A control that is still under construction or already half destroyed asks its container, never itself.
Form* Control::Root() {
    return parent_ == nullptr ? nullptr : parent_->Root();
}

Result<void> Control::Move(const Rect& place) {
    if (place.width < 0 || place.height < 0) {
        return Failure(ErrorNumber::InvalidArgument, "a control cannot be smaller than nothing");
    }
    if (place == place_) {
        return {};
    }
    const bool isNewSize = place.width != place_.width || place.height != place_.height;
    place_ = place;
    Tell(Property::Place);
    if (isNewSize) {
        SizeChanged();
    }
    return {};
}

void Control::SetEnabled(bool enabled) {
    if (enabled == enabled_) {
        return;
    }
    enabled_ = enabled;
    Tell(Property::Enabled);
    if (Form* form = Root()) {
        form->KeepFocusUsable();
    }
}

void Control::SetVisible(bool visible) {
    if (visible == visible_) {
        return;
    }
    visible_ = visible;
    Tell(Property::Visible);
    if (Form* form = Root()) {
        form->KeepFocusUsable();
    }
}

bool Control::Usable() const {
    return visible_ && enabled_ && (parent_ == nullptr || parent_->Usable());
}

bool Control::HasFocus() {
    Form* form = Root();
    return form != nullptr && form->ActiveControl() == this;
}

void Control::SetFocus() {
    if (Form* form = Root()) {
        form->GiveFocus(*this);
    }
}

void Control::Tell(Property property) {
    Form* form = Root();
    if (form != nullptr && form->mirror_ != nullptr) {
        form->mirror_->Changed(*this, property);
    }
}

}  // namespace lintara::forms
