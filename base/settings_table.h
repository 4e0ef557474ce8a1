// Every setting of the program as data, for the dialogs that use some and the tools that list them all, and
// the way in which the state of a check box is stored.
#pragma once

#include "base/result.h"
#include "base/settings_store.h"
#include "base/text.h"

#include <cstdint>
#include <span>

namespace lintara {

// What values a setting makes sense with. The store itself holds any text.
enum class SettingKind {
    CheckBox,     // "0" or "1"
    WholeNumber,  // decimal digits, of 32 bits
    Label,        // a name
    FreeText,
};

struct SettingInfo {
    TextView key;
    TextView section;
    TextView absent;  // what stands in for a value that was never stored
    SettingKind kind = SettingKind::FreeText;

    [[nodiscard]] SettingName name() const;

    friend bool operator==(const SettingInfo&, const SettingInfo&) = default;
};

// The settings in the order in which people see them.
[[nodiscard]] std::span<const SettingInfo> SettingsTable();

// The setting of that key; keys occur once, whatever their section. Null when there is none.
[[nodiscard]] const SettingInfo* FindSetting(TextView key);

// The stored text, or the setting's default when there is none or the store cannot be read.
[[nodiscard]] Text ReadSetting(SettingsStore& store, const SettingInfo& setting);

// The state of a check box, 0 or 1 as this program stores it: the number that is stored, or the number 1 when
// there is none. The words true and false in any letter case, as people write them into a settings file,
// are 1 and 0. Another text that is no number is a type mismatch, and a number of more than 16 bits an
// overflow, as the language's conversion to an integer has it.
[[nodiscard]] Result<std::int32_t> ReadCheckBox(SettingsStore& store, SettingName name);

// Stores the decimal text of the number.
[[nodiscard]] Result<void> SaveCheckBox(SettingsStore& store, SettingName name, std::int32_t value);

}  // namespace lintara
