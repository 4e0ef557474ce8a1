// lintara settings list, get, set and reset: their command lines; settings_command.h does the work.
#include "base/settings_table.h"
#include "base/utf8.h"
#include "cli/commands/commands.h"
#include "cli/commands/settings_command.h"
#include "cli/environment.h"
#include "cli/options/shared_options.h"
#include "cli/project/text_source.h"

#include <stdexcept>

namespace lintara::cli {
namespace {

constexpr std::string_view ListFooter =
    "\nThe settings belong to the user and hold for all projects. LNBase, LNStep, EHLabel and EHCode stand\n"
    "in for --base, --step, --label and --template where neither the command line nor a project file\n"
    "gives them.\n"
    "\nExample:\n"
    "  lintara settings list\n"
    "      Every setting with its value; those that nobody has set are marked as defaults.\n"
    "\nExit status:\n"
    "  0  done\n"
    "  2  wrong usage\n"
    "  3  the settings could not be read\n";

constexpr std::string_view GetFooter =
    "\nExample:\n"
    "  lintara settings get EHCode > handler.txt\n"
    "      The template of error handlers into a file. A line break follows the value.\n"
    "\nExit status:\n"
    "  0  done\n"
    "  2  wrong usage, or an unknown setting\n"
    "  3  the settings could not be read\n";

constexpr std::string_view SetFooter =
    "\nExamples:\n"
    "  lintara settings set LNStep 10\n"
    "      Number in steps of 10 from now on.\n"
    "  lintara settings set EHCode - < handler.txt\n"
    "      Take the template of error handlers from a file, without the line break at its end.\n"
    "\nExit status:\n"
    "  0  done\n"
    "  2  wrong usage, an unknown setting, or a value that it cannot have\n"
    "  3  the settings could not be read or written\n";

constexpr std::string_view ResetFooter =
    "\nExample:\n"
    "  lintara settings reset EHCode\n"
    "      Back to the template of error handlers that lintara comes with.\n"
    "\nExit status:\n"
    "  0  done, or the setting had its default\n"
    "  2  wrong usage, or an unknown setting\n"
    "  3  the settings could not be read or written\n";

std::span<const std::string_view> Keys() {
    static const std::vector<std::string> names = [] {
        std::vector<std::string> keys;
        for (const SettingInfo& setting : SettingsTable()) {
            keys.push_back(ToUtf8(setting.key));
        }
        return keys;
    }();
    static const std::vector<std::string_view> views(names.begin(), names.end());
    return views;
}

ArgumentInfo KeyArgument() {
    return {
        .name = "KEY", .description = "Name of the setting; letter case does not matter", .values = Keys()};
}

ExitStatus RunOnStore(const SettingsRequest& request, Environment& environment) {
    if (environment.platform.settings == nullptr) {
        throw std::runtime_error("there are no settings on this system");
    }
    return RunSettingsCommand(request, *environment.platform.settings, environment.streams);
}

ExitStatus RunList(const OptionReader& given, Environment& environment) {
    return RunOnStore({.action = SettingsRequest::Action::List, .json = given.Flag("json")}, environment);
}

ExitStatus RunGet(const OptionReader& given, Environment& environment) {
    return RunOnStore(
        {.action = SettingsRequest::Action::Get, .key = given.Argument(0), .json = given.Flag("json")},
        environment);
}

ExitStatus RunSet(const OptionReader& given, Environment& environment) {
    SettingsRequest request{
        .action = SettingsRequest::Action::Set, .key = given.Argument(0), .value = given.Argument(1)};
    if (request.value == "-") {
        const auto text = ReadText(StandardInput{}, environment.streams.in);
        if (!text) {
            throw std::runtime_error(text.error());
        }
        request.value = ToUtf8(*text);
    }
    return RunOnStore(request, environment);
}

ExitStatus RunReset(const OptionReader& given, Environment& environment) {
    return RunOnStore({.action = SettingsRequest::Action::Reset, .key = given.Argument(0)}, environment);
}

}  // namespace

CommandInfo SettingsListCommand() {
    return {.name = "settings list",
            .description = "Show the user's settings",
            .footer = ListFooter,
            .arguments = {},
            .options = {JsonOption()},
            .run = RunList};
}

CommandInfo SettingsGetCommand() {
    return {.name = "settings get",
            .description = "Print the value of a setting",
            .footer = GetFooter,
            .arguments = {KeyArgument()},
            .options = {JsonOption()},
            .run = RunGet};
}

CommandInfo SettingsSetCommand() {
    return {.name = "settings set",
            .description = "Change a setting",
            .footer = SetFooter,
            .arguments = {KeyArgument(),
                          {.name = "VALUE",
                           .description = "Its new value, - for standard input",
                           .mayBeEmpty = true}},
            .options = {},
            .run = RunSet};
}

CommandInfo SettingsResetCommand() {
    return {.name = "settings reset",
            .description = "Give a setting its default again",
            .footer = ResetFooter,
            .arguments = {KeyArgument()},
            .options = {},
            .run = RunReset};
}

}  // namespace lintara::cli
