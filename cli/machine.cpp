#include "cli/machine.h"

#include "base/constants.h"
#include "cli/output/terminal_text.h"
#include "platform/machine_identity.h"
#include "platform/regional_texts.h"
#include "platform/system_clock.h"
#include "platform/toml_settings.h"
#include "platform/user_folders.h"

namespace lintara::cli {
namespace {

void Warn(Sink& err, const platform::SettingsNotice& notice) {
    std::string place = PrintablePath(notice.file);
    if (notice.line > 0) {
        place += ":" + std::to_string(notice.line);
    }
    err.Write("lintara: warning: " + place + ": " + Printable(std::string_view(notice.text)) + "\n");
}

}  // namespace

void ConnectToMachine(Environment& environment) {
    Sink& err = environment.streams.err;
    environment.platform.settings = std::make_shared<platform::TomlSettings>(
        platform::UserConfigFolder(), [&err](const platform::SettingsNotice& notice) { Warn(err, notice); });
    environment.platform.clock = std::make_shared<platform::SystemClock>();
    environment.platform.regional = std::make_shared<platform::SystemRegionalTexts>();
    if (const auto state = platform::UserStateFolder(); !state.empty()) {
        environment.stateFolder =
            state / platform::ApplicationFolderName(constants::SettingsApplication) / "undo";
    }
    environment.identity = std::make_shared<platform::MachineIdentity>();
}

}  // namespace lintara::cli
