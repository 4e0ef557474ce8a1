// A form: a window of its own, with its controls as data members.
//
// Its life: made, loaded when it is first touched, shown, hidden, unloaded. What a form does at these
// moments, it does in the handlers of its events. All sizes are those of the window's inside; the frame
// around it is the renderer's affair.
#pragma once

#include "forms/container.h"
#include "forms/toolkit.h"

#include <vector>

namespace lintara::forms {

class Form : public Container {
  public:
    Form(TextView name, TextView caption, const Size& size);

    void Accept(ControlVisitor& visitor) override;
    [[nodiscard]] Form* Root() override { return this; }

    [[nodiscard]] const Text& FormCaption() const { return caption_; }

    // The smallest inside that a user can make it, and whether it can be resized at all.
    Size minimum;
    bool resizable = true;
    // Whether it has a place of its own on the screen; else it is shown in the middle. Who shows it keeps its
    // left and top edge like the window's then, and sets this.
    bool placed = false;

    // Raised once, by the first EnsureLoaded or ShowModal.
    Event<> Load;
    // After each change of the size once the form is loaded, and when it is shown for the first time. Status
    // bars are in their places then.
    Event<> Resize;
    // Raised once, by Unload or by the window's close box; only after Load.
    Event<> Unloading;

    // The services that touch the form call this first, before they change any control: loading must not
    // undo what they set.
    void EnsureLoaded();

    // Shows the form until it is hidden or closed, with the keyboard focus on the first tab stop. Returns at
    // once when loading has closed it already.
    void ShowModal(Toolkit& toolkit);
    // Takes it from the screen; its controls keep their values.
    void Hide() { SetVisible(false); }
    // Ends its life. The window's close box does this, too.
    void Unload();
    [[nodiscard]] bool IsUnloaded() const { return state_ == State::Unloaded; }

    // The control that has the keyboard focus; null when none has, or while the form is not shown.
    [[nodiscard]] Control* ActiveControl() const { return active_; }
    void GiveFocus(Control& control);
    // All controls of the form from first to last in tab order, those that do not take the focus as well.
    [[nodiscard]] std::vector<Control*> ControlsInOrder() const;

    // Who shows the form's widgets; null while nobody does.
    void SetMirror(Mirror* mirror) { mirror_ = mirror; }

  protected:
    void SizeChanged() override;

  private:
    friend class Control;

    enum class State { New, Loading, Loaded, Unloaded };

    void AlignStatusBars();
    // Moves the focus on when its control has been disabled or hidden.
    void KeepFocusUsable();

    Text caption_;
    State state_ = State::New;
    bool hasBeenShown_ = false;
    Control* active_ = nullptr;
    Mirror* mirror_ = nullptr;
};

}  // namespace lintara::forms
