#include "cli/commands/settings_command.h"

#include "base/constants.h"
#include "base/settings_table.h"
#include "base/utf8.h"
#include "cli/guards/labels.h"
#include "cli/options/handler_options.h"
#include "cli/options/number_rules.h"
#include "cli/options/option_values.h"
#include "cli/output/json_text.h"
#include "cli/output/messages.h"
#include "cli/output/terminal_text.h"
#include "cli/scope/near_names.h"
#include "workspace/characters.h"

#include <algorithm>
#include <expected>
#include <optional>
#include <vector>

namespace lintara::cli {
namespace {

// What a setting holds, and whether somebody stored that.
struct HeldValue {
    Text text;
    bool isDefault = false;
};

Result<HeldValue> HeldBy(SettingsStore& store, const SettingInfo& setting) {
    Result<std::optional<Text>> found = store.Find(setting.name());
    if (!found) {
        return std::unexpected(found.error());
    }
    if (!*found) {
        return HeldValue{Text(setting.absent), true};
    }
    return HeldValue{**std::move(found), false};
}

ExitStatus Complain(Streams& streams, std::string message, ExitStatus status) {
    Messages(streams, false).Error({{}, 0, std::move(message)});
    return status;
}

ExitStatus ComplainOf(Streams& streams, const SettingInfo& setting, const HostError& error) {
    return Complain(streams, ToUtf8(setting.key) + ": " + std::string(error.reason), ExitStatus::Failed);
}

const SettingInfo* SettingNamed(TextView wanted) {
    const Text folded = workspace::FoldCase(wanted);
    for (const SettingInfo& setting : SettingsTable()) {
        const Text key(setting.key);
        if (folded == workspace::FoldCase(key) ||
            folded == workspace::FoldCase(Text(setting.section) + u"." + key)) {
            return &setting;
        }
    }
    return nullptr;
}

// The setting that the request names; complains when there is none.
const SettingInfo* NamedSetting(const SettingsRequest& request, Streams& streams) {
    const Text wanted = FromUtf8(request.key);
    const SettingInfo* setting = SettingNamed(wanted);
    if (setting == nullptr) {
        std::vector<Text> keys;
        for (const SettingInfo& known : SettingsTable()) {
            keys.emplace_back(known.key);
        }
        Complain(streams,
                 "there is no setting '" + request.key + "'." +
                     Suggestion(wanted.substr(wanted.rfind(u'.') + 1), keys) +
                     " 'lintara settings list' shows them all",
                 ExitStatus::Usage);
    }
    return setting;
}

// The value on the line of its key or, when it has several lines, below it, each behind a bar.
std::string Listed(const HeldValue& value) {
    const std::string mark = value.isDefault ? "  (default)" : "";
    if (!value.text.contains(u'\n') && !value.text.contains(u'\r')) {
        return (value.text.empty() ? "(empty)" : Printable(value.text)) + mark + "\n";
    }
    std::string lines = mark.empty() ? "" : mark.substr(2);
    std::size_t at = 0;
    while (at < value.text.size()) {
        const std::size_t end = std::min(value.text.find(u"\r\n", at), value.text.size());
        lines += "\n    | " + Printable(TextView(value.text).substr(at, end - at));
        at = end + 2;
    }
    return lines + "\n";
}

ExitStatus List(const SettingsRequest& request, SettingsStore& store, Streams& streams) {
    std::size_t width = 0;
    for (const SettingInfo& setting : SettingsTable()) {
        width = std::max(width, setting.key.size());
    }
    Json all = Json::array();
    std::string table;
    TextView section;
    for (const SettingInfo& setting : SettingsTable()) {
        const Result<HeldValue> value = HeldBy(store, setting);
        if (!value) {
            return ComplainOf(streams, setting, value.error());
        }
        all.push_back({{"key", JsonText(setting.key)},
                       {"section", JsonText(setting.section)},
                       {"value", JsonText(value->text)},
                       {"default", value->isDefault}});
        if (setting.section != section) {
            section = setting.section;
            table += ToUtf8(section) + "\n";
        }
        table +=
            "  " + ToUtf8(setting.key) + std::string(width - setting.key.size() + 2, ' ') + Listed(*value);
    }
    streams.out.Write(request.json ? Dump({{"settings", std::move(all)}}) : table);
    return ExitStatus::Done;
}

ExitStatus Get(const SettingsRequest& request, const SettingInfo& setting, SettingsStore& store,
               Streams& streams) {
    const Result<HeldValue> value = HeldBy(store, setting);
    if (!value) {
        return ComplainOf(streams, setting, value.error());
    }
    if (request.json) {
        streams.out.Write(Dump({{"key", JsonText(setting.key)},
                                {"section", JsonText(setting.section)},
                                {"value", JsonText(value->text)},
                                {"default", value->isDefault}}));
        return ExitStatus::Done;
    }
    streams.out.Write(ForReader(ToUtf8(value->text) + "\n", streams.outIsTerminal));
    return ExitStatus::Done;
}

// What an insertion would have against the value.
std::optional<std::string> NumberObjection(const SettingInfo& setting, std::int32_t number) {
    if (setting.key == constants::LineNumberBaseKey) {
        return BaseProblem(number);
    }
    return setting.key == constants::LineNumberStepKey ? StepProblem(number) : std::nullopt;
}

std::optional<std::string> LabelObjection(const std::string& value) {
    if (value.find_first_not_of(" \t") == std::string::npos) {
        return "the label is empty";
    }
    if (value.find_first_of("\r\n") != std::string::npos) {
        return "the label is more than one line";
    }
    const auto problem = LabelProblem(FromUtf8(value));
    return problem ? std::optional("'" + value + "' is no label: " + *problem) : std::nullopt;
}

// Why the setting has no use for the value.
std::optional<std::string> Objection(const SettingInfo& setting, const std::string& value,
                                     SettingsStore& store) {
    switch (setting.kind) {
        case SettingKind::CheckBox:
            if (value != "0" && value != "1") {
                return "'" + value + "' is neither 0 (off) nor 1 (on)";
            }
            return std::nullopt;
        case SettingKind::WholeNumber: {
            const auto number = ParseWholeNumber(ToUtf8(setting.key), value);
            if (!number) {
                return number.error().substr(setting.key.size() + 2);
            }
            return NumberObjection(setting, *number);
        }
        case SettingKind::Label:
            return LabelObjection(value);
        case SettingKind::FreeText:
            if (setting.key == constants::ErrorHandlerCodeKey) {
                return TemplateProblem(FromUtf8(value),
                                       ReadSetting(store, *FindSetting(constants::ErrorHandlerLabelKey)));
            }
            return std::nullopt;
    }
    return std::nullopt;
}

bool IsUtf8(std::string_view bytes) {
    while (!bytes.empty()) {
        const std::size_t length = Utf8SequenceLength(bytes);
        if (length == 0) {
            return false;
        }
        bytes.remove_prefix(length);
    }
    return true;
}

ExitStatus Set(const SettingsRequest& request, const SettingInfo& setting, SettingsStore& store,
               Streams& streams) {
    if (!IsUtf8(request.value)) {
        return Complain(streams, ToUtf8(setting.key) + ": the value is not in UTF-8", ExitStatus::Usage);
    }
    if (const auto objection = Objection(setting, request.value, store)) {
        return Complain(streams, ToUtf8(setting.key) + ": " + *objection, ExitStatus::Usage);
    }
    if (const Result<void> saved = store.Save(setting.name(), FromUtf8(request.value)); !saved) {
        return ComplainOf(streams, setting, saved.error());
    }
    return ExitStatus::Done;
}

// What was never stored stays so; else the default is stored.
ExitStatus Reset(const SettingInfo& setting, SettingsStore& store, Streams& streams) {
    const Result<HeldValue> value = HeldBy(store, setting);
    if (!value) {
        return ComplainOf(streams, setting, value.error());
    }
    if (value->isDefault) {
        return ExitStatus::Done;
    }
    if (const Result<void> saved = store.Save(setting.name(), setting.absent); !saved) {
        return ComplainOf(streams, setting, saved.error());
    }
    return ExitStatus::Done;
}

}  // namespace

ExitStatus RunSettingsCommand(const SettingsRequest& request, SettingsStore& store, Streams& streams) {
    if (request.action == SettingsRequest::Action::List) {
        return List(request, store, streams);
    }
    const SettingInfo* setting = NamedSetting(request, streams);
    if (setting == nullptr) {
        return ExitStatus::Usage;
    }
    switch (request.action) {
        case SettingsRequest::Action::List:
        case SettingsRequest::Action::Get:
            return Get(request, *setting, store, streams);
        case SettingsRequest::Action::Set:
            return Set(request, *setting, store, streams);
        case SettingsRequest::Action::Reset:
            return Reset(*setting, store, streams);
    }
    return ExitStatus::Failed;
}

}  // namespace lintara::cli
