// Edits the two texts that error handlers are made from: the handler's label, and the template of its code.
// It begins with the user's last ones, says whenever they become valid or invalid, and exchanges text with
// the copy-and-paste buffer by keyboard. It never stores anything: that is for its container.
#pragma once

#include "base/settings_store.h"
#include "forms/container.h"
#include "forms/drawing.h"
#include "forms/event.h"
#include "forms/label.h"
#include "forms/text_box.h"
#include "forms/toolkit.h"

namespace lintara::controls {

class CtlEHInsert final : public forms::UserControl {
  public:
    // `settings` and `toolkit` outlive the control.
    CtlEHInsert(forms::Container& container, TextView name, const forms::Rect& place, SettingsStore& settings,
                forms::Toolkit& toolkit);

    // Enables or disables the labels and the text boxes.
    void SetState(bool enabled);
    [[nodiscard]] const Text& EHLabel() const { return txtEHLabel.Contents(); }
    [[nodiscard]] const Text& EHCode() const { return txtEHCode.Contents(); }
    // Raises IsValid twice, with the present state: for the label, and for the code.
    void EvaluateValidity();

    // The copy-and-paste buffer: Ctrl+Shift+C puts the selected code into it, Ctrl+Shift+V puts it into the
    // code. The container hands it in and takes it back.
    Text sCCPBuffer;

    // After every change of either text: whether neither is empty. What a handler does to its argument is
    // ignored.
    forms::Event<bool> IsValid;

    forms::Shape Shape1;
    forms::Label lblEHLabel;
    forms::TextBox txtEHLabel;
    forms::LineControl Line1;
    forms::Label lblEHCode;
    forms::TextBox txtEHCode;
    // Holds the template that users start from; never shown.
    forms::TextBox Text1;

  protected:
    void SizeChanged() override { UserControl_Resize(); }

  private:
    void UserControl_Initialize(SettingsStore& settings);
    void UserControl_Resize();
    void txtEHLabel_Change();
    void txtEHCode_Change();
    void txtEHCode_KeyDown(std::int16_t keyCode, std::int16_t held);

    forms::Toolkit& toolkit_;
    bool isLabelValid_ = false;
    bool isCodeValid_ = false;
};

}  // namespace lintara::controls
