// What the four dialogs have in common: where they stand, their help, their check boxes in the settings, the
// places of their three buttons.
#pragma once

#include "dialogs/common_dialog.h"
#include "dialogs/dialog_host.h"
#include "forms/buttons.h"
#include "forms/form.h"

#include <cstdint>

namespace lintara::dialogs {

// The topics of the help file.
inline constexpr std::int32_t ErrorHandlerTopic = 60;
inline constexpr std::int32_t CustomCodeTopic = 66;

// Lays the form where it stood when it was last closed. For its Load.
void LoadWindowState(const DialogHost& host, forms::Form& form);
// Has its place remembered. For its Unloading.
void SaveWindowState(const DialogHost& host, forms::Form& form);

// Shows a topic of the help file, and leaves the dialog open.
void ShowHelpTopic(const DialogHost& host, CommonDialog& dialog, std::int32_t topic);

// Gives the box its stored state. A stored text that is no state of a check box leaves it as it is.
void ReadBox(const DialogHost& host, TextView key, forms::CheckBox& box);
void SaveBox(const DialogHost& host, TextView key, const forms::CheckBox& box);
// A text of the settings, by the setting's key: the default where nothing is stored.
[[nodiscard]] Text ReadText(const DialogHost& host, TextView key);
void SaveText(const DialogHost& host, TextView key, TextView text);

[[nodiscard]] inline bool IsChecked(const forms::CheckBox& box) {
    return box.Value() == forms::CheckBox::Checked;
}

// The height of a status bar, and the places of the three buttons, side by side from `left` and `top` on.
inline constexpr forms::Twips StatusBarHeight = 345;
inline constexpr forms::Size ButtonSize{1275, 390};
inline constexpr forms::Twips ButtonStep = ButtonSize.width + 105;
inline constexpr forms::Size ButtonsSize{2 * ButtonStep + ButtonSize.width, ButtonSize.height};
[[nodiscard]] constexpr forms::Rect ButtonPlace(int index, forms::Twips left = 0, forms::Twips top = 0) {
    return {left + index * ButtonStep, top, ButtonSize.width, ButtonSize.height};
}

}  // namespace lintara::dialogs
