#include "base/settings_table.h"

#include "base/constants.h"
#include "base/numbers.h"
#include "base/strings.h"

#include <algorithm>

namespace lintara {

namespace {

using enum SettingKind;

constexpr TextView checked = u"1";

constexpr SettingInfo table[] = {
    {constants::InsertLineNumbersKey, constants::CodeAutomationSection, checked, CheckBox},
    {constants::InsertErrorHandlersKey, constants::CodeAutomationSection, checked, CheckBox},
    {constants::LineNumberBaseKey, constants::CodeAutomationSection, constants::DefaultLineNumberBase,
     WholeNumber},
    {constants::LineNumberStepKey, constants::CodeAutomationSection, constants::DefaultLineNumberStep,
     WholeNumber},
    {constants::ErrorHandlerLabelKey, constants::CodeAutomationSection, constants::DefaultErrorHandlerLabel,
     Label},
    {constants::ErrorHandlerCodeKey, constants::CodeAutomationSection, constants::DefaultErrorHandlerCode,
     FreeText},
    // Crossed on purpose, see constants.h: "RemoveLN" is the box for error handlers, "RemoveEH" that for line
    // numbers.
    {constants::RemoveErrorHandlersKey, constants::CodeAutomationSection, checked, CheckBox},
    {constants::RemoveLineNumbersKey, constants::CodeAutomationSection, checked, CheckBox},
    {constants::LastCustomCodeKey, constants::CodeAutomationSection, u"", FreeText},
    {constants::UseDelimitersKey, constants::CodeAutomationSection, checked, CheckBox},
    {constants::CodeDbPathKey, constants::AssistantsSection, u"", FreeText},
};

bool IsWord(TextView text, TextView word) {
    return text.size() == word.size() && InStr(text, word, Compare::Textual) == 1;
}

}  // namespace

SettingName SettingInfo::name() const {
    return {constants::SettingsApplication, section, key};
}

std::span<const SettingInfo> SettingsTable() {
    return table;
}

const SettingInfo* FindSetting(TextView key) {
    const auto* const found = std::ranges::find(table, key, &SettingInfo::key);
    return found == std::ranges::end(table) ? nullptr : found;
}

Text ReadSetting(SettingsStore& store, const SettingInfo& setting) {
    return store.Get(setting.name(), setting.absent);
}

Result<std::int32_t> ReadCheckBox(SettingsStore& store, SettingName name) {
    const Text stored = store.Get(name, checked);
    if (IsWord(stored, u"true")) {
        return 1;
    }
    if (IsWord(stored, u"false")) {
        return 0;
    }
    return CInt(stored);
}

Result<void> SaveCheckBox(SettingsStore& store, SettingName name, std::int32_t value) {
    return store.Save(name, CStr(value));
}

}  // namespace lintara
