// Makes the system controls of a form's controls, one for each kind of control.
#pragma once

#include "forms/control_visitor.h"
#include "ui/win32/control_view.h"

#include <memory>
#include <unordered_map>

namespace lintara::forms {
class Container;
}

namespace lintara::ui::win32 {

// The views by their controls. Lines and shapes have none.
using Views = std::unordered_map<const forms::Control*, std::unique_ptr<ControlView>>;

// In the order of the form: a label is the neighbour in front of what it names, by which assistive technology
// knows that.
class ViewMaker final : public forms::ControlVisitor {
  public:
    ViewMaker(ViewContext& context, Views& views) : context_(context), views_(views) {}

    // Makes those of all controls in `container`, inside the window `parent`.
    void MakeAll(const forms::Container& container, HWND parent);

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
    template <class View, class Control>
    View& Add(Control& control);
    void AddContainer(forms::Container& container);

    ViewContext& context_;
    Views& views_;
    HWND parent_ = nullptr;
};

}  // namespace lintara::ui::win32
