#include "cli/options/layers.h"

#include "base/settings_table.h"
#include "base/utf8.h"
#include "cli/commands/commands.h"
#include "cli/options/shared_options.h"
#include "cli/output/messages.h"

#include <set>

namespace lintara::cli {
namespace {

std::filesystem::path ProjectOf(const OptionReader& given) {
    const ReadOptions read = ReadReading(given);
    return read.stdinFilename ? *read.stdinFilename : read.path.empty() ? "." : read.path;
}

void AddUserSettings(const OptionReader& given, Environment& environment, GivenOptions& options) {
    SettingsStore* store = environment.platform.settings.get();
    std::set<std::string_view> complaints;
    for (const OptionInfo& option : given.command().options) {
        const SettingInfo* setting = FindSetting(option.setting);
        if (store == nullptr || setting == nullptr || options.Has(option.name)) {
            continue;
        }
        const auto value = store->Find(setting->name());
        if (!value) {
            complaints.insert(value.error().reason);
        } else if (*value) {
            options.Add(option.name, {.texts = {ToUtf8(**value)},
                                      .origin = OptionOrigin::UserSettings,
                                      .place = ToUtf8(setting->key)});
        }
    }
    for (const std::string_view complaint : complaints) {
        Messages(environment.streams, given.Flag("quiet"))
            .Warning({{}, 0, "the user's settings are left out: " + std::string(complaint)});
    }
}

}  // namespace

std::optional<ProjectFile> ProjectFileOf(const OptionReader& given) {
    if (given.command().Option("no-config") == nullptr) {
        return std::nullopt;
    }
    const auto named = given.TextOf("config");
    Require(!named || !given.Flag("no-config"),
            "--config names a file to use, --no-config uses none; give one");
    if (given.Flag("no-config")) {
        return std::nullopt;
    }
    const auto path = named ? std::filesystem::path(*named) : FindProjectFile(ProjectOf(given));
    return path ? std::optional(ReadProjectFile(*path, Commands())) : std::nullopt;
}

OptionReader WithLayers(const OptionReader& given, Environment& environment) {
    GivenOptions options = given.given();
    if (const auto file = ProjectFileOf(given)) {
        options.AddMissing(file->For(given.command()));
    }
    AddUserSettings(given, environment, options);
    return given.With(std::move(options));
}

}  // namespace lintara::cli
