// The per-user store of settings: texts under an application, a section and a key. What stands behind it is
// the platform's: a file, the registry, or memory in tests. The keys that this program uses, with their
// defaults, are in base/constants.h.
#pragma once

#include "base/result.h"
#include "base/text.h"

#include <optional>

namespace lintara {

// The three names that address one value: views that live for the call. Whether names that differ in letter
// case alone are one is the store's own affair: a file and memory tell them apart, the registry does not. So
// no two names of a program may differ in nothing else, and each is always spelled alike.
struct SettingName {
    TextView application;
    TextView section;
    TextView key;
};

class SettingsStore {
  public:
    virtual ~SettingsStore() = default;

    // The stored text; nullopt when the key is absent. Fails when the store cannot be read.
    [[nodiscard]] virtual Result<std::optional<Text>> Find(SettingName name) = 0;

    // Stores `value` exactly as it is, in place of an earlier one. A failing call leaves the earlier value.
    [[nodiscard]] virtual Result<void> Save(SettingName name, TextView value) = 0;

    // The stored text, or `absent` when there is none or the store cannot be read.
    [[nodiscard]] Text Get(SettingName name, TextView absent) {
        const Result<std::optional<Text>> found = Find(name);
        return found && *found ? **found : Text(absent);
    }
};

}  // namespace lintara
