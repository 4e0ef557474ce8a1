#ifndef _WIN32

#include "platform/toml_settings.h"

#include "platform/locked_file.h"
#include "platform/user_folders.h"

#include <chrono>
#include <utility>

namespace lintara::platform {

namespace fs = std::filesystem;

namespace {

constexpr auto patience = std::chrono::seconds(10);

// Settings are texts that a person typed. What is larger is none of ours.
constexpr std::size_t largestFile = std::size_t{16} * 1024 * 1024;

std::expected<TomlDocument, TomlError> ParseSmall(std::string bytes) {
    if (bytes.size() > largestFile) {
        return std::unexpected(TomlError{0, "it is larger than 16 MiB"});
    }
    return TomlDocument::Parse(std::move(bytes));
}

TomlDocument EmptyDocument() {
    return *TomlDocument::Parse({});
}

}  // namespace

TomlSettings::TomlSettings(fs::path configFolder, NoticeSink notify)
    : configFolder_(std::move(configFolder)), notify_(std::move(notify)) {}

fs::path TomlSettings::FileOf(TextView application) const {
    return configFolder_ / ApplicationFolderName(application) / "settings.toml";
}

Result<std::optional<Text>> TomlSettings::Find(SettingName name) {
    constexpr std::string_view reason = "the settings cannot be read";
    if (configFolder_.empty()) {
        return Fail({}, "there is no home folder for settings", reason);
    }
    const fs::path file = FileOf(name.application);
    auto bytes = ReadSmallFile(file, largestFile + 1);
    if (!bytes) {
        return Fail(file, std::move(bytes.error()), reason);
    }
    if (!*bytes) {
        return std::nullopt;
    }
    const auto document = ParseSmall(**std::move(bytes));
    if (!document) {
        Notify({file, document.error().line,
                "the settings are damaged, and defaults stand in for them: " + document.error().what});
        return std::nullopt;
    }
    auto found = document->Find(name.section, name.key);
    if (!found) {
        Notify({file, found.error().line, found.error().what + "; a default stands in for it"});
        return std::nullopt;
    }
    return *std::move(found);
}

Result<void> TomlSettings::Save(SettingName name, TextView value) {
    constexpr std::string_view reason = "the settings cannot be written";
    if (configFolder_.empty()) {
        return Fail({}, "there is no home folder for settings", reason);
    }
    const fs::path file = FileOf(name.application);
    const auto locked = LockedFile::Open(file, patience);
    if (!locked) {
        return Fail(file, locked.error(), reason);
    }
    if (!locked->isLocked()) {
        Notify({file, 0,
                "cannot be kept from other programs while it is written; do not run two programs that write "
                "it at the same time"});
    }
    auto bytes = locked->Read(largestFile + 1);
    if (!bytes) {
        return Fail(file, std::move(bytes.error()), reason);
    }
    const auto document = ParseSmall(*std::move(bytes));
    const TomlDocument nothing = EmptyDocument();
    const auto text = (document ? *document : nothing).With(name.section, name.key, value);
    if (!text) {
        return Fail(file, text.error().what, reason, text.error().line);
    }
    if (text->size() > largestFile) {
        return Fail(file, "would become larger than 16 MiB", reason);
    }
    const auto kept = document ? std::nullopt : std::optional(locked->CopyAside());
    if (kept && !*kept) {
        return Fail(file, kept->error(), reason);
    }
    if (const auto replaced = locked->Replace(*text); !replaced) {
        std::error_code ignored;
        fs::remove(kept ? **kept : fs::path(), ignored);
        return Fail(file, replaced.error(), reason);
    }
    if (kept) {
        NotifyOfDamage(file, document.error(), **kept);
    }
    return {};
}

void TomlSettings::NotifyOfDamage(const fs::path& file, const TomlError& error, const fs::path& kept) {
    Notify({file, error.line,
            "the settings were damaged: " + error.what + ". They were kept as " + kept.string() +
                ", and a new file was begun"});
}

std::unexpected<HostError> TomlSettings::Fail(const fs::path& file, std::string text, std::string_view reason,
                                              std::size_t line) {
    Notify({file, line, std::move(text), true});
    return Failure(ErrorNumber::HostFailure, reason);
}

void TomlSettings::Notify(SettingsNotice notice) {
    if (notify_ && told_.insert(notice).second) {
        notify_(notice);
    }
}

}  // namespace lintara::platform

#endif
