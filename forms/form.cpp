#include "forms/form.h"

#include "base/statement.h"
#include "forms/control_visitor.h"
#include "forms/keyboard.h"
#include "forms/status_bar.h"

#include <algorithm>

namespace lintara::forms {
namespace {

void Collect(const Container& container, std::vector<Control*>& controls) {
    for (Control* control : container.Controls()) {
        controls.push_back(control);
        if (const auto* inner = dynamic_cast<const Container*>(control)) {
            Collect(*inner, controls);
        }
    }
}

bool CanBeActive(const Control& control) {
    return control.TakesFocus() && control.Usable();
}

}  // namespace

Form::Form(TextView name, TextView caption, const Size& size) : Container(name), caption_(caption) {
    place_ = {0, 0, size.width, size.height};
}

void Form::Accept(ControlVisitor& visitor) {
    visitor.Visit(*this);
}

void Form::EnsureLoaded() {
    if (state_ != State::New) {
        return;
    }
    state_ = State::Loading;
    Load.Raise();
    if (state_ == State::Loading) {
        state_ = State::Loaded;
    }
}

void Form::ShowModal(Toolkit& toolkit) {
    EnsureLoaded();
    if (state_ != State::Loaded) {
        return;
    }
    if (!hasBeenShown_) {
        hasBeenShown_ = true;
        Resize.Raise();
    }
    SetVisible(true);
    toolkit.RunModal(*this);
    active_ = nullptr;
}

void Form::Unload() {
    if (state_ == State::New || state_ == State::Unloaded) {
        state_ = State::Unloaded;
        return;
    }
    state_ = State::Unloaded;
    Unloading.Raise();
    Hide();
}

void Form::GiveFocus(Control& control) {
    if (&control == active_ || !CanBeActive(control)) {
        return;
    }
    active_ = &control;
    control.Tell(Property::Focus);
    control.FocusGained();
}

std::vector<Control*> Form::ControlsInOrder() const {
    std::vector<Control*> controls;
    Collect(*this, controls);
    return controls;
}

void Form::SizeChanged() {
    AlignStatusBars();
    if (state_ == State::Loading || state_ == State::Loaded) {
        Resize.Raise();
    }
}

void Form::AlignStatusBars() {
    for (Control* control : Controls()) {
        if (auto* bar = dynamic_cast<StatusBar*>(control)) {
            Attempt(bar->Move({0, Height() - bar->Height(), Width(), bar->Height()}));
        }
    }
}

void Form::KeepFocusUsable() {
    if (!Visible() || (active_ != nullptr && CanBeActive(*active_))) {
        return;
    }
    const std::vector<Control*> controls = ControlsInOrder();
    const auto lost = std::ranges::find(controls, active_);
    const auto isStop = [](const Control* control) { return IsTabStop(*control); };
    auto next = std::find_if(lost, controls.end(), isStop);
    if (next == controls.end()) {
        next = std::ranges::find_if(controls, isStop);
    }
    active_ = nullptr;
    if (next != controls.end()) {
        GiveFocus(**next);
    }
}

}  // namespace lintara::forms
