// A widget that shows a control. The window (form_window.h) places it, shows and hides it, enables it and
// gives it the focus; the rest of what a control can show is its widget's own.
//
// Each widget hands what the user does with it to the control, once, and takes from the control what it
// shows. To tell the two directions apart, a widget asks the window's MirrorGate: what it signals while the
// window carries a change of the form over to the widgets, the user has not done.
#pragma once

#include "forms/mirror.h"
#include "forms/mirror_gate.h"

#include <QSize>
#include <QString>

class QWidget;

namespace lintara::ui {

using forms::MirrorGate;

class ControlView {
  public:
    virtual ~ControlView() = default;

    [[nodiscard]] virtual QWidget& Widget() = 0;

    // Shows what `property` of the control is now. Only what differs is touched.
    virtual void Update(forms::Property property) = 0;

    // The size in pixels that it takes to show what does not change with the user's work, such as a caption.
    // A width or height of 0 is for those that can do with any.
    [[nodiscard]] virtual QSize NeededSize() const { return {}; }

    // The caption that NeededSize speaks of, without its mark; "" where there is none.
    [[nodiscard]] virtual QString Caption() const { return {}; }

    // The desktop's colours or fonts have changed, or are known now for the first time.
    virtual void UpdateLook() {}
};

}  // namespace lintara::ui
