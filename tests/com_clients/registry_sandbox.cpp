#include "tests/com_clients/registry_sandbox.h"

#include "base/constants.h"
#include "base/settings_table.h"
#include "platform/registry_settings.h"

#include <stdexcept>
#include <string>

namespace lintara::support {
namespace {

// Test programs may run at the same time.
std::wstring SandboxKey() {
    return L"Software\\Tarnwick test of component clients " + std::to_wstring(GetCurrentProcessId());
}
constexpr const wchar_t* SettingsKey = L"Software\\VB and VBA Program Settings";

}  // namespace

RegistrySandbox::RegistrySandbox() {
    RegDeleteTreeW(HKEY_CURRENT_USER, SandboxKey().c_str());
    if (RegCreateKeyW(HKEY_CURRENT_USER, SandboxKey().c_str(), &key_) != ERROR_SUCCESS ||
        RegOverridePredefKey(HKEY_CURRENT_USER, key_) != ERROR_SUCCESS) {
        throw std::runtime_error("the registry cannot be replaced");
    }
}

RegistrySandbox::~RegistrySandbox() {
    RegOverridePredefKey(HKEY_CURRENT_USER, nullptr);
    RegCloseKey(key_);
    RegDeleteTreeW(HKEY_CURRENT_USER, SandboxKey().c_str());
}

SettingsInRegistry::SettingsInRegistry(SettingsStore* settings) {
    platform::RegistrySettings registry;
    for (const SettingInfo& setting : SettingsTable()) {
        const auto stored =
            settings == nullptr ? std::nullopt : settings->Find(setting.name()).value_or(std::nullopt);
        if (stored) {
            (void)registry.Save(setting.name(), *stored);
        }
    }
}

SettingsInRegistry::~SettingsInRegistry() {
    RegDeleteTreeW(HKEY_CURRENT_USER, SettingsKey);
}

}  // namespace lintara::support
