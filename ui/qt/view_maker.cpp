#include "ui/qt/view_maker.h"

#include "ui/qt/arrows_view.h"
#include "ui/qt/button_views.h"
#include "ui/qt/drawings.h"
#include "ui/qt/label_views.h"
#include "ui/qt/line_box.h"
#include "ui/qt/page_box.h"
#include "ui/qt/text_conversion.h"
#include "ui/qt/tree_widget.h"

namespace lintara::ui {

QWidget* WidgetOf(const Views& views, forms::Control& control) {
    const auto found = views.find(&control);
    return found == views.end() ? nullptr : &found->second->Widget();
}

void ViewMaker::MakeAll(const forms::Container& container, QWidget& parent) {
    QWidget* const outer = parent_;
    for (forms::Control* control : container.Controls()) {
        parent_ = &parent;
        control->Accept(*this);
    }
    parent_ = outer;
}

void ViewMaker::Visit(forms::CheckBox& control) {
    Add(control, *new CheckBoxView(parent_, control, gate_));
}

void ViewMaker::Visit(forms::CommandButton& control) {
    Add(control, *new PushButtonView(parent_, control));
}

// A form stands in no other.
void ViewMaker::Visit(forms::Form& /*control*/) {}

void ViewMaker::Visit(forms::Frame& control) {
    AddContainer(control);
}

void ViewMaker::Visit(forms::Label& control) {
    Add(control, *new LabelView(parent_, control));
}

void ViewMaker::Visit(forms::LineControl& /*control*/) {}

void ViewMaker::Visit(forms::OptionButton& control) {
    Add(control, *new RadioButtonView(parent_, control, gate_));
}

void ViewMaker::Visit(forms::Shape& /*control*/) {}

void ViewMaker::Visit(forms::StatusBar& control) {
    Add(control, *new StatusBarView(parent_, control));
}

void ViewMaker::Visit(forms::TextBox& control) {
    if (control.IsMultiLine()) {
        Add(control, *new PageBox(parent_, control, gate_));
    } else {
        Add(control, *new LineBox(parent_, control, gate_));
    }
}

void ViewMaker::Visit(forms::TreeView& control) {
    Add(control, *new TreeViewWidget(parent_, control, gate_));
}

void ViewMaker::Visit(forms::UpDown& control) {
    Add(control, *new ArrowsView(parent_, control));
    const auto buddy = views_.find(&control.Buddy());
    if (auto* box = buddy == views_.end() ? nullptr : dynamic_cast<LineBox*>(buddy->second)) {
        box->SetArrows(control);
    }
}

void ViewMaker::Visit(forms::UserControl& control) {
    AddContainer(control);
}

void ViewMaker::Add(forms::Control& control, ControlView& view) {
    view.Widget().setObjectName(ToQString(control.Name()));
    views_.emplace(&control, &view);
}

void ViewMaker::AddContainer(forms::Container& container) {
    auto* view = new ContainerView(parent_, container, scale_);
    Add(container, *view);
    MakeAll(container, *view);
}

}  // namespace lintara::ui
