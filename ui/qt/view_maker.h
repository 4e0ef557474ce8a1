// Makes the widgets of a form's controls, one for each kind of control.
#pragma once

#include "forms/control.h"
#include "forms/control_visitor.h"
#include "ui/qt/control_view.h"
#include "ui/qt/scale.h"

#include <unordered_map>

class QWidget;

namespace lintara::forms {
class Container;
class TextBox;
}  // namespace lintara::forms

namespace lintara::ui {

// The widgets by their controls. They belong to their parent widgets. Lines and shapes have none.
using Views = std::unordered_map<forms::Control*, ControlView*>;

// Null for a control without a widget.
[[nodiscard]] QWidget* WidgetOf(const Views& views, forms::Control& control);

class ViewMaker final : public forms::ControlVisitor {
  public:
    ViewMaker(MirrorGate& gate, const Scale& scale) : gate_(gate), scale_(scale) {}

    // Makes the widgets of all controls in `container`, in their order, inside the widget `parent`.
    void MakeAll(const forms::Container& container, QWidget& parent);

    [[nodiscard]] const Views& views() const { return views_; }

    void Visit(forms::CheckBox& control) override;
    void Visit(forms::CommandButton& control) override;
    void Visit(forms::Form& control) override;
    void Visit(forms::Frame& control) override;
    void Visit(forms::Label& control) override;
    void Visit(forms::LineControl& control) override;
    void Visit(forms::OptionButton& control) override;
    void Visit(forms::Shape& control) override;
    void Visit(forms::StatusBar& control) override;
    void Visit(forms::TextBox& control) override;
    void Visit(forms::TreeView& control) override;
    void Visit(forms::UpDown& control) override;
    void Visit(forms::UserControl& control) override;

  private:
    void Add(forms::Control& control, ControlView& view);
    void AddContainer(forms::Container& container);

    MirrorGate& gate_;
    const Scale& scale_;
    QWidget* parent_ = nullptr;
    Views views_;
};

}  // namespace lintara::ui
