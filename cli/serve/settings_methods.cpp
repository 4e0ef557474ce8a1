// settings.*: the store that the library and the dialogs use.
#include "base/constants.h"
#include "cli/serve/arguments.h"
#include "cli/serve/request_error.h"
#include "cli/serve/session.h"

namespace lintara::cli {
namespace {

SettingsStore& StoreOf(Session& session) {
    if (session.settings() == nullptr) {
        throw HostFailure("there are no settings on this system");
    }
    return *session.settings();
}

SettingName NameOf(const Arguments& arguments) {
    return {constants::SettingsApplication, arguments.TextOf("section"), arguments.TextOf("key")};
}

Json GetSetting(Session& session, const Arguments& arguments) {
    const std::optional<Text> value = Checked(StoreOf(session).Find(NameOf(arguments)));
    return ValueResult(JsonText(value ? *value : arguments.TextOf("default")));
}

Json SaveSetting(Session& session, const Arguments& arguments) {
    Checked(StoreOf(session).Save(NameOf(arguments), arguments.TextOf("value")));
    return Json::object();
}

}  // namespace

std::vector<MethodInfo> SettingsMethods() {
    return {
        {"settings.get", {{"section"}, {"key"}, {"default"}}, GetSetting},
        {"settings.save", {{"section"}, {"key"}, {"value"}}, SaveSetting},
    };
}

}  // namespace lintara::cli
