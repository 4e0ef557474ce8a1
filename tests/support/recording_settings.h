// Settings in memory that note what is saved, and of which one call can be made to fail.
#pragma once

#include "base/settings_store.h"
#include "base/utf8.h"
#include "platform/memory_settings.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace lintara::support {

class RecordingSettings final : public SettingsStore {
  public:
    // What was saved, in order, as "key=value".
    std::vector<std::string> saves;
    // How many calls there were, and the one among them that fails, counted from 0.
    std::size_t calls = 0;
    std::optional<std::size_t> failingCall;
    bool allFail = false;

    Result<std::optional<Text>> Find(SettingName name) override {
        return Fails() ? Failure(ErrorNumber::HostFailure, "the test wants it") : stored_.Find(name);
    }
    Result<void> Save(SettingName name, TextView value) override {
        if (Fails()) {
            return Failure(ErrorNumber::HostFailure, "the test wants it");
        }
        saves.push_back(ToUtf8(name.key) + "=" + ToUtf8(value));
        return stored_.Save(name, value);
    }

    // Stores a value of the section "CodeAutomation" unnoticed, and reads one; "(none)" when there is none.
    void Put(TextView key, TextView value) {
        (void)stored_.Save({u"Tarnwick", u"CodeAutomation", key}, value);
    }
    [[nodiscard]] Text Stored(TextView key) {
        return stored_.Get({u"Tarnwick", u"CodeAutomation", key}, u"(none)");
    }

  private:
    bool Fails() { return calls++ == failingCall || allFail; }

    platform::MemorySettings stored_;
};

}  // namespace lintara::support
