#include "dialogs/conventions.h"

#include "base/settings_table.h"
#include "base/statement.h"
#include "dialogs/placed_form.h"

namespace lintara::dialogs {
namespace {

constexpr TextView HelpFileName = u"TARNWK30.HLP";

}  // namespace

void LoadWindowState(const DialogHost& host, forms::Form& form) {
    PlacedForm window(form);
    if (host.globals != nullptr) {
        Attempt(host.globals->LoadWindowState(window));
    } else if (host.placement != nullptr) {
        host.placement->Load(window);
    }
}

void SaveWindowState(const DialogHost& host, forms::Form& form) {
    const PlacedForm window(form);
    if (host.globals != nullptr) {
        Attempt(host.globals->SaveWindowState(window));
    } else if (host.placement != nullptr && form.placed) {
        host.placement->Save(window);
    }
}

void ShowHelpTopic(const DialogHost& host, CommonDialog& dialog, std::int32_t topic) {
    dialog.HelpFile = host.libraryFolder + u"\\" + Text(HelpFileName);
    dialog.HelpContext = topic;
    dialog.HelpCommand = CommonDialog::ShowContext;
    dialog.ShowHelp(host.toolkit);
}

void ReadBox(const DialogHost& host, TextView key, forms::CheckBox& box) {
    std::int32_t value = box.Value();
    Assign(value, ReadCheckBox(host.settings, FindSetting(key)->name()));
    Attempt(box.SetValue(static_cast<std::int16_t>(value)));
}

void SaveBox(const DialogHost& host, TextView key, const forms::CheckBox& box) {
    Attempt(SaveCheckBox(host.settings, FindSetting(key)->name(), box.Value()));
}

Text ReadText(const DialogHost& host, TextView key) {
    return ReadSetting(host.settings, *FindSetting(key));
}

void SaveText(const DialogHost& host, TextView key, TextView text) {
    Attempt(host.settings.Save(FindSetting(key)->name(), text));
}

}  // namespace lintara::dialogs
