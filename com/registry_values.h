// Texts in the registry that belong together, written and taken away again as one.
#pragma once

#include <span>
#include <string>
#include <windows.h>

namespace lintara::com {

struct RegistryValue {
    std::wstring key;   // a path below the folder
    std::wstring name;  // "" for the key's default value
    std::wstring text;
};

// Where the values lie: paths of keys count from here.
struct RegistryFolder {
    HKEY root;
    std::wstring path;
};

// Writes the values in their order, with the keys that they need. When one cannot be written, those that were
// written before it are taken away again, and the answer is the system's reason.
[[nodiscard]] LSTATUS WriteValues(const RegistryFolder& folder, std::span<const RegistryValue> values);

// Takes the values away, and each of their keys, and of the keys above those below the folder, that holds
// nothing else. Values that are absent are no error; what cannot be taken away does not keep the rest.
[[nodiscard]] LSTATUS RemoveValues(const RegistryFolder& folder, std::span<const RegistryValue> values);

// The text of a value; "" when there is none.
[[nodiscard]] std::wstring ReadValue(const RegistryFolder& folder, const std::wstring& key,
                                     const std::wstring& name);

[[nodiscard]] bool KeyExists(const RegistryFolder& folder, const std::wstring& key);

}  // namespace lintara::com
