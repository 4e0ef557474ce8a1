// One function for each kind of control: how a renderer tells them apart.
#pragma once

namespace lintara::forms {

class CheckBox;
class CommandButton;
class Form;
class Frame;
class Label;
class LineControl;
class OptionButton;
class Shape;
class StatusBar;
class TextBox;
class TreeView;
class UpDown;
class UserControl;

class ControlVisitor {
  public:
    virtual ~ControlVisitor() = default;

    virtual void Visit(CheckBox& control) = 0;
    virtual void Visit(CommandButton& control) = 0;
    virtual void Visit(Form& control) = 0;
    virtual void Visit(Frame& control) = 0;
    virtual void Visit(Label& control) = 0;
    virtual void Visit(LineControl& control) = 0;
    virtual void Visit(OptionButton& control) = 0;
    virtual void Visit(Shape& control) = 0;
    virtual void Visit(StatusBar& control) = 0;
    virtual void Visit(TextBox& control) = 0;
    virtual void Visit(TreeView& control) = 0;
    virtual void Visit(UpDown& control) = 0;
    virtual void Visit(UserControl& control) = 0;
};

}  // namespace lintara::forms
