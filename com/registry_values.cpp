#include "com/registry_values.h"

#include "platform/registry_key.h"

#include <array>
#include <ranges>

namespace lintara::com {

using platform::RegistryKey;

namespace {

std::wstring PathOf(const RegistryFolder& folder, const std::wstring& key) {
    return folder.path + L'\\' + key;
}

LSTATUS Write(const RegistryFolder& folder, const RegistryValue& value) {
    RegistryKey key;
    const LSTATUS status = key.Create(folder.root, PathOf(folder, value.key), KEY_SET_VALUE);
    return status != ERROR_SUCCESS ? status : key.SetText(value.name, value.text);
}

bool IsAbsent(LSTATUS status) {
    return status == ERROR_FILE_NOT_FOUND || status == ERROR_PATH_NOT_FOUND;
}

bool IsEmpty(const RegistryFolder& folder, const std::wstring& path) {
    RegistryKey key;
    DWORD keys = 0;
    DWORD values = 0;
    return key.Open(folder.root, path, KEY_READ) == ERROR_SUCCESS &&
           ::RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, &keys, nullptr, nullptr, &values, nullptr,
                              nullptr, nullptr, nullptr) == ERROR_SUCCESS &&
           keys == 0 && values == 0;
}

// The key and those above it, as far as they are empty.
LSTATUS RemoveEmptyKeys(const RegistryFolder& folder, std::wstring key) {
    while (!key.empty() && IsEmpty(folder, PathOf(folder, key))) {
        const LSTATUS status = ::RegDeleteKeyW(folder.root, PathOf(folder, key).c_str());
        if (status != ERROR_SUCCESS) {
            return status;
        }
        const std::size_t separator = key.rfind(L'\\');
        key.resize(separator == std::wstring::npos ? 0 : separator);
    }
    return ERROR_SUCCESS;
}

LSTATUS Remove(const RegistryFolder& folder, const RegistryValue& value) {
    RegistryKey key;
    LSTATUS status = key.Open(folder.root, PathOf(folder, value.key), KEY_SET_VALUE);
    if (status == ERROR_SUCCESS) {
        status = ::RegDeleteValueW(key.get(), value.name.c_str());
    }
    return IsAbsent(status) ? ERROR_SUCCESS : status;
}

}  // namespace

LSTATUS WriteValues(const RegistryFolder& folder, std::span<const RegistryValue> values) {
    for (std::size_t i = 0; i < values.size(); ++i) {
        const LSTATUS status = Write(folder, values[i]);
        if (status != ERROR_SUCCESS) {
            // With the one that failed: its key may be there.
            static_cast<void>(RemoveValues(folder, values.first(i + 1)));
            return status;
        }
    }
    return ERROR_SUCCESS;
}

LSTATUS RemoveValues(const RegistryFolder& folder, std::span<const RegistryValue> values) {
    LSTATUS result = ERROR_SUCCESS;
    for (const RegistryValue& value : std::views::reverse(values)) {
        for (const LSTATUS status : {Remove(folder, value), RemoveEmptyKeys(folder, value.key)}) {
            if (result == ERROR_SUCCESS) {
                result = status;
            }
        }
    }
    return result;
}

std::wstring ReadValue(const RegistryFolder& folder, const std::wstring& key, const std::wstring& name) {
    std::array<wchar_t, 512> text{};
    DWORD bytes = sizeof text;
    const LSTATUS status = ::RegGetValueW(folder.root, PathOf(folder, key).c_str(), name.c_str(),
                                          RRF_RT_REG_SZ, nullptr, text.data(), &bytes);
    return status == ERROR_SUCCESS ? std::wstring(text.data()) : std::wstring();
}

bool KeyExists(const RegistryFolder& folder, const std::wstring& key) {
    RegistryKey opened;
    return opened.Open(folder.root, PathOf(folder, key), KEY_READ) == ERROR_SUCCESS;
}

}  // namespace lintara::com
