// Who shows a form keeps its widgets like the form's controls through this interface.
#pragma once

namespace lintara::forms {

class Control;

// What of a control has changed.
enum class Property {
    Place,
    Enabled,
    Visible,
    Caption,
    Text,
    Selection,
    Value,
    Colors,
    Border,
    Segment,
    Nodes,
    SelectedNode,
    NodeInView,
    Focus,
};

class Mirror {
  public:
    virtual ~Mirror() = default;

    // `property` of `control` has a new value. Called before the control's event is raised, also for changes
    // that the user made in the widget itself.
    virtual void Changed(Control& control, Property property) = 0;
};

}  // namespace lintara::forms
