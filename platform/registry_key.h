// An open key of the registry.
#pragma once

#ifdef _WIN32

#include <string>
#include <utility>
#include <windows.h>

namespace lintara::platform {

class RegistryKey {
  public:
    RegistryKey() = default;
    RegistryKey(RegistryKey&& other) noexcept : key_(std::exchange(other.key_, nullptr)) {}
    RegistryKey& operator=(RegistryKey&& other) noexcept {
        std::swap(key_, other.key_);
        return *this;
    }
    ~RegistryKey() {
        if (key_ != nullptr) {
            ::RegCloseKey(key_);
        }
    }

    // Both answer as the system does, with ERROR_SUCCESS or the reason why the key is not open.
    [[nodiscard]] LSTATUS Open(HKEY root, const std::wstring& path, REGSAM rights) {
        return ::RegOpenKeyExW(root, path.c_str(), 0, rights, Place());
    }
    // Makes the key if there is none.
    [[nodiscard]] LSTATUS Create(HKEY root, const std::wstring& path, REGSAM rights) {
        return ::RegCreateKeyExW(root, path.c_str(), 0, nullptr, 0, rights, nullptr, Place(), nullptr);
    }

    // Stores a text under a name; the name of the key's default value is "".
    [[nodiscard]] LSTATUS SetText(const std::wstring& name, const std::wstring& text) const {
        const auto bytes = static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t));
        return ::RegSetValueExW(key_, name.c_str(), 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                                bytes);
    }

    [[nodiscard]] HKEY get() const { return key_; }

  private:
    [[nodiscard]] HKEY* Place() {
        *this = RegistryKey();
        return &key_;
    }

    HKEY key_ = nullptr;
};

}  // namespace lintara::platform

#endif
