// What all controls have in common: a name, a container, a place in it, and whether they can be seen and
// used.
//
// Controls are data members of the form or of the user control that they are part of; they belong to their
// container for as long as they live, and are never copied or moved. A setter that gives a property the value
// it has does nothing. Any other tells the mirror (forms/mirror.h) and then raises the event that the
// platform raises for it, once.
#pragma once

#include "base/result.h"
#include "base/text.h"
#include "forms/font.h"
#include "forms/geometry.h"
#include "forms/mirror.h"

namespace lintara::forms {

class Container;
class ControlVisitor;
class Form;

class Control {
  public:
    // `name` is the control's name in code, with its index in a control array.
    Control(Container& container, TextView name, const Rect& place);
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;
    virtual ~Control();

    // Calls the visitor's function for this kind of control.
    virtual void Accept(ControlVisitor& visitor) = 0;

    [[nodiscard]] const Text& Name() const { return name_; }
    // Null for a form.
    [[nodiscard]] Container* Parent() const { return parent_; }
    // The form that holds the control, itself for a form; null for a control that stands on no form.
    [[nodiscard]] virtual Form* Root();

    [[nodiscard]] const Rect& Place() const { return place_; }
    [[nodiscard]] Twips Left() const { return place_.left; }
    [[nodiscard]] Twips Top() const { return place_.top; }
    [[nodiscard]] Twips Width() const { return place_.width; }
    [[nodiscard]] Twips Height() const { return place_.height; }
    // A negative width or height is an error, which leaves all four as they were.
    Result<void> Move(const Rect& place);
    Result<void> SetLeft(Twips left) { return Move({left, place_.top, place_.width, place_.height}); }
    Result<void> SetTop(Twips top) { return Move({place_.left, top, place_.width, place_.height}); }
    Result<void> SetWidth(Twips width) { return Move({place_.left, place_.top, width, place_.height}); }
    Result<void> SetHeight(Twips height) { return Move({place_.left, place_.top, place_.width, height}); }

    [[nodiscard]] bool Enabled() const { return enabled_; }
    void SetEnabled(bool enabled);
    [[nodiscard]] bool Visible() const { return visible_; }
    void SetVisible(bool visible);
    // Whether the user can do something with it: it and all its containers are visible and enabled.
    [[nodiscard]] bool Usable() const;

    // Whether it can have the keyboard focus, and whether it has it. Setting the focus is ignored when it
    // cannot, or cannot at present.
    [[nodiscard]] virtual bool TakesFocus() const { return false; }
    [[nodiscard]] bool HasFocus();
    void SetFocus();

    Font font;
    // For assistive technology, where the caption or the label in front does not say it.
    Text description;

  protected:
    // For a form.
    explicit Control(TextView name);

    // Tells the mirror of the form, if it is shown.
    void Tell(Property property);

    // What follows from a new size and from getting the focus.
    virtual void SizeChanged() {}
    virtual void FocusGained() {}

  private:
    friend class Form;

    Container* parent_ = nullptr;
    Text name_;
    Rect place_;
    bool enabled_ = true;
    bool visible_ = true;
};

}  // namespace lintara::forms
