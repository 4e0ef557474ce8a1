// The settings store of systems without one of their own: a file per user and application that people can
// read and edit, `settings.toml` in the application's folder, with a table per section and a string per key.
//
// Several processes may use it at once: each reads the file as it is, and one after the other changes it. It
// is never half written. On a file system without locks two may change it at a time; then the later change
// wins, and the user hears of the danger. A file that is damaged counts as empty; the first Save keeps it as
// `settings.toml.bad` before it puts a new one in its place, and Find alone changes nothing on the disk. The
// file's layout is described in toml_document.h and settings_text.h.
#pragma once

#include "base/settings_store.h"
#include "platform/toml_document.h"

#include <cstddef>
#include <filesystem>
#include <functional>
#include <set>
#include <string>

namespace lintara::platform {

// What a person should know about a settings file.
struct SettingsNotice {
    std::filesystem::path file;
    std::size_t line = 0;  // from 1; 0 when it is about the whole file
    std::string text;      // without the path: "cannot be read: Permission denied"
    bool isError = false;  // the call fails; else it is a warning

    friend auto operator<=>(const SettingsNotice&, const SettingsNotice&) = default;
};

class TomlSettings final : public SettingsStore {
  public:
    using NoticeSink = std::function<void(const SettingsNotice&)>;

    // `configFolder` is the one that UserConfigFolder() tells; when it is empty, every call fails. `notify`
    // hears of each matter once.
    explicit TomlSettings(std::filesystem::path configFolder, NoticeSink notify = {});

    // Fails when there is a file that cannot be read, or something else than a file. A list or a table where
    // the text should be is no value, and `notify` hears of it.
    [[nodiscard]] Result<std::optional<Text>> Find(SettingName name) override;

    // Makes the file and its folders when there are none. Fails, and leaves the earlier value, when the file
    // can be neither read nor written, when another process is writing it for seconds, or when a list or a
    // table stands where the text should be: people wrote it, and it is not lost.
    [[nodiscard]] Result<void> Save(SettingName name, TextView value) override;

    // Where the settings of that application lie.
    [[nodiscard]] std::filesystem::path FileOf(TextView application) const;

  private:
    [[nodiscard]] std::unexpected<HostError> Fail(const std::filesystem::path& file, std::string text,
                                                  std::string_view reason, std::size_t line = 0);
    void NotifyOfDamage(const std::filesystem::path& file, const TomlError& error,
                        const std::filesystem::path& kept);
    void Notify(SettingsNotice notice);

    std::filesystem::path configFolder_;
    NoticeSink notify_;
    std::set<SettingsNotice> told_;
};

}  // namespace lintara::platform
