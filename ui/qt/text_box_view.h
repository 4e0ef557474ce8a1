// What the two widgets for text boxes have in common: how text and selection go from the control to the
// widget and back.
//
// The user's work reaches the control when the widget has finished with the event that brought it, whatever
// the widget went through meanwhile, so that a keystroke, a paste or an input method's word is one change.
// What the form writes into the box is written as the piece that differs, so the user can undo it.
#pragma once

#include "forms/text_box.h"
#include "ui/qt/control_view.h"
#include "ui/qt/shown_text.h"

#include <QString>

class QKeyEvent;

namespace lintara::ui {

class TextBoxView : public ControlView {
  public:
    void Update(forms::Property property) override;

    // While the widget handles an event of the user's.
    class UserEvent {
      public:
        explicit UserEvent(TextBoxView& view) : view_(view) { ++view_.eventDepth_; }
        ~UserEvent();
        UserEvent(const UserEvent&) = delete;
        UserEvent& operator=(const UserEvent&) = delete;

      private:
        TextBoxView& view_;
    };

  protected:
    struct Selection {
        qsizetype start = 0;
        qsizetype length = 0;

        friend bool operator==(const Selection&, const Selection&) = default;
    };

    TextBoxView(forms::TextBox& box, MirrorGate& gate) : box_(box), gate_(gate) {}

    // The widget's text, with "\n" for each break, and what is selected in it.
    [[nodiscard]] virtual QString WidgetText() const = 0;
    [[nodiscard]] virtual Selection WidgetSelection() const = 0;
    // Changes the widget, in a way that the user can undo.
    virtual void ChangeWidget(const Difference& difference) = 0;
    virtual void SelectInWidget(const Selection& selection) = 0;

    // The widget's text or selection is another one. To be connected with its signals.
    void WidgetChanged();

    // Raises the control's KeyDown, which comes before what the key does.
    void RaiseKeyDown(const QKeyEvent& event);

    [[nodiscard]] forms::TextBox& Box() const { return box_; }
    [[nodiscard]] MirrorGate& Gate() const { return gate_; }

  private:
    void TakeFromWidget();
    void ShowInWidget();
    [[nodiscard]] Text TextAfter(const ShownText& before, Difference difference) const;

    forms::TextBox& box_;
    MirrorGate& gate_;
    int eventDepth_ = 0;
    bool hasChanged_ = false;
    bool isTaking_ = false;
};

}  // namespace lintara::ui
