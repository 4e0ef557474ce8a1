#include "ui/win32/view_maker.h"

#include "ui/win32/arrows_view.h"
#include "ui/win32/button_views.h"
#include "ui/win32/container_view.h"
#include "ui/win32/label_views.h"
#include "ui/win32/text_box_view.h"
#include "ui/win32/tree_window.h"

#include <utility>

namespace lintara::ui::win32 {

void ViewMaker::MakeAll(const forms::Container& container, HWND parent) {
    const HWND outer = std::exchange(parent_, parent);
    for (forms::Control* control : container.Controls()) {
        control->Accept(*this);
    }
    parent_ = outer;
}

void ViewMaker::Visit(forms::CheckBox& control) {
    Add<CheckBoxView>(control);
}

void ViewMaker::Visit(forms::CommandButton& control) {
    Add<PushButtonView>(control);
}

// A form stands in no other.
void ViewMaker::Visit(forms::Form& /*control*/) {}

void ViewMaker::Visit(forms::Frame& control) {
    AddContainer(control);
}

void ViewMaker::Visit(forms::Label& control) {
    Add<LabelView>(control);
}

void ViewMaker::Visit(forms::LineControl& /*control*/) {}

void ViewMaker::Visit(forms::OptionButton& control) {
    Add<OptionButtonView>(control);
}

void ViewMaker::Visit(forms::Shape& /*control*/) {}

void ViewMaker::Visit(forms::StatusBar& control) {
    Add<StatusBarView>(control);
}

void ViewMaker::Visit(forms::TextBox& control) {
    Add<TextBoxView>(control);
}

void ViewMaker::Visit(forms::TreeView& control) {
    Add<TreeWindow>(control);
}

void ViewMaker::Visit(forms::UpDown& control) {
    Add<ArrowsView>(control);
    const auto buddy = views_.find(&control.Buddy());
    if (auto* box = buddy == views_.end() ? nullptr : dynamic_cast<TextBoxView*>(buddy->second.get())) {
        box->SetArrows(control);
    }
}

void ViewMaker::Visit(forms::UserControl& control) {
    AddContainer(control);
}

template <class View, class Control>
View& ViewMaker::Add(Control& control) {
    auto view = std::make_unique<View>(context_, parent_, control);
    View& made = *view;
    views_.emplace(&control, std::move(view));
    return made;
}

void ViewMaker::AddContainer(forms::Container& container) {
    MakeAll(container, Add<ContainerView>(container).Handle());
}

}  // namespace lintara::ui::win32
