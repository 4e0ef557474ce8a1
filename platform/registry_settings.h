// The settings store of Windows: the area of the registry in which the language's own SaveSetting and
// GetSetting keep their values, so that programs written in it share them. A value lies below the user's own
// key at "Software\VB and VBA Program Settings\<application>\<section>", under the setting's key, as text.
#pragma once

#ifdef _WIN32

#include "base/settings_store.h"

namespace lintara::platform {

class RegistrySettings final : public SettingsStore {
  public:
    // A value of another type than text is absent, as it is for the language. Fails when an application or
    // section is empty or has a backslash, which would lead into another place, when a name has a zero
    // character, and when the registry denies access.
    [[nodiscard]] Result<std::optional<Text>> Find(SettingName name) override;

    // Fails as Find does, and for a text with a zero character, which would end it for other programs.
    [[nodiscard]] Result<void> Save(SettingName name, TextView value) override;
};

}  // namespace lintara::platform

#endif
