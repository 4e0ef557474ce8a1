// The user's part of the registry, replaced for this process, so that tests neither see nor leave settings.
#pragma once

#include "base/settings_store.h"

#include <windows.h>

namespace lintara::support {

class RegistrySandbox {
  public:
    RegistrySandbox();
    ~RegistrySandbox();
    RegistrySandbox(const RegistrySandbox&) = delete;
    RegistrySandbox& operator=(const RegistrySandbox&) = delete;

  private:
    HKEY key_ = nullptr;
};

// While it lives, the registry holds the settings of a test's store, as far as the transformers read them.
class SettingsInRegistry {
  public:
    explicit SettingsInRegistry(SettingsStore* settings);
    ~SettingsInRegistry();
    SettingsInRegistry(const SettingsInRegistry&) = delete;
    SettingsInRegistry& operator=(const SettingsInRegistry&) = delete;
};

}  // namespace lintara::support
