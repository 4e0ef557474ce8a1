#ifdef _WIN32

#include "platform/registry_settings.h"

#include "platform/registry_key.h"
#include "platform/wide_text.h"

#include <string>
#include <utility>
#include <windows.h>

namespace lintara::platform {

namespace {

constexpr const wchar_t* area = L"Software\\VB and VBA Program Settings\\";

bool HasZero(TextView text) {
    return text.contains(u'\0');
}

bool IsFolderName(TextView name) {
    return !name.empty() && !name.contains(u'\\') && !HasZero(name);
}

Result<std::wstring> PathOf(SettingName name) {
    if (!IsFolderName(name.application) || !IsFolderName(name.section) || HasZero(name.key)) {
        return Failure(ErrorNumber::InvalidArgument, "the registry cannot hold a setting of that name");
    }
    return area + ToWide(name.application) + L'\\' + ToWide(name.section);
}

std::unexpected<HostError> Denied() {
    return Failure(ErrorNumber::HostFailure, "the registry denies access to the setting");
}

bool IsAbsent(LSTATUS status) {
    // Of another type than the one that was asked for.
    return status == ERROR_FILE_NOT_FOUND || status == ERROR_UNSUPPORTED_TYPE;
}

}  // namespace

Result<std::optional<Text>> RegistrySettings::Find(SettingName name) {
    const Result<std::wstring> path = PathOf(name);
    if (!path) {
        return std::unexpected(path.error());
    }
    const std::wstring key = ToWide(name.key);
    std::wstring value(256, L'\0');
    while (true) {
        auto bytes = static_cast<DWORD>(value.size() * sizeof(wchar_t));
        const LSTATUS status = ::RegGetValueW(HKEY_CURRENT_USER, path->c_str(), key.c_str(), RRF_RT_REG_SZ,
                                              nullptr, value.data(), &bytes);
        if (status == ERROR_SUCCESS) {
            value.resize(bytes / sizeof(wchar_t));
            while (!value.empty() && value.back() == L'\0') {
                value.pop_back();
            }
            return FromWide(value);
        }
        if (status != ERROR_MORE_DATA) {
            return IsAbsent(status) ? Result<std::optional<Text>>(std::nullopt) : Denied();
        }
        // `bytes` is what is needed now; another program may store a longer text before the next round.
        value.resize(bytes / sizeof(wchar_t) + 1);
    }
}

Result<void> RegistrySettings::Save(SettingName name, TextView value) {
    const Result<std::wstring> path = PathOf(name);
    if (!path) {
        return std::unexpected(path.error());
    }
    if (HasZero(value)) {
        return Failure(ErrorNumber::InvalidArgument, "the registry cannot hold a zero character in a text");
    }
    RegistryKey key;
    if (key.Create(HKEY_CURRENT_USER, *path, KEY_SET_VALUE) != ERROR_SUCCESS ||
        key.SetText(ToWide(name.key), ToWide(value)) != ERROR_SUCCESS) {
        return Denied();
    }
    return {};
}

}  // namespace lintara::platform

#endif
