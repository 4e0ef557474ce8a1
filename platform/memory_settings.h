// A settings store that lives in memory and ends with its owner: for tests, and for programs that are to
// leave nothing behind.
#pragma once

#include "base/settings_store.h"

#include <map>
#include <tuple>

namespace lintara::platform {

class MemorySettings final : public SettingsStore {
  public:
    [[nodiscard]] Result<std::optional<Text>> Find(SettingName name) override {
        const auto found = values_.find(KeyOf(name));
        return found == values_.end() ? std::nullopt : std::optional(found->second);
    }

    [[nodiscard]] Result<void> Save(SettingName name, TextView value) override {
        values_.insert_or_assign(KeyOf(name), Text(value));
        return {};
    }

  private:
    using Key = std::tuple<Text, Text, Text>;

    static Key KeyOf(SettingName name) {
        return {Text(name.application), Text(name.section), Text(name.key)};
    }

    std::map<Key, Text> values_;
};

}  // namespace lintara::platform
