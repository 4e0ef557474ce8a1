// What the keys do that belong to a form and not to the control with the focus: access keys, Tab, Enter, Esc.
#pragma once

#include "forms/form.h"

namespace lintara::forms {

// Whether Tab stops at the control. Of the option buttons in a container it stops at the selected one only,
// or at each when none is selected.
[[nodiscard]] bool IsTabStop(const Control& control);

// Alt and a character: gives the focus to the next usable control behind the active one whose caption has
// that access key, a label passing it on to the control behind itself, and presses, toggles or selects a
// button. Where several controls have the key, it only goes from one to the next. Returns whether any has it.
bool PressAccessKey(Form& form, char16_t key);

// Tab, or Shift and Tab: the next or the previous tab stop, round and round.
void PressTab(Form& form, bool backwards = false);

// Enter presses the button with the focus, else the default button. In a text box of many lines and in a tree
// it belongs to the control: then nothing happens, and false is returned.
bool PressEnter(Form& form);
// Esc presses the cancel button. False when there is none to press.
bool PressEscape(Form& form);

}  // namespace lintara::forms
