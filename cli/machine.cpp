#include "cli/machine.h"

#include "base/constants.h"
#include "cli/output/terminal_text.h"
#include "platform/machine_identity.h"
#include "platform/path_text.h"
#include "platform/regional_texts.h"
#include "platform/sqlite_engine.h"
#include "platform/system_clock.h"
#include "platform/toml_settings.h"
#include "platform/user_folders.h"

#include <array>
#include <system_error>
#include <unistd.h>

namespace lintara::cli {
namespace {

void Warn(Sink& err, const platform::SettingsNotice& notice) {
    std::string place = PrintablePath(notice.file);
    if (notice.line > 0) {
        place += ":" + std::to_string(notice.line);
    }
    err.Write("lintara: warning: " + place + ": " + Printable(std::string_view(notice.text)) + "\n");
}

void WarnOfDatabase(Sink& err, const platform::DatabaseNotice& notice) {
    err.Write("lintara: warning: " + PrintablePath(notice.file) + ": " +
              Printable(std::string_view(notice.text)) + "\n");
}

// The folder of this program; "" when the system does not tell.
Text ProgramFolder() {
    std::error_code error;
    const auto program = std::filesystem::read_symlink("/proc/self/exe", error);
    return error || !program.is_absolute() ? Text() : platform::FolderToText(program.parent_path());
}

std::optional<std::string> AskAtTerminal(Streams& streams, std::string_view question) {
    streams.err.Write(question);
    std::string answer;
    std::array<char, 1> byte{};
    while (true) {
        const auto got = streams.in.Read(byte);
        if (!got || *got == 0) {
            return answer.empty() ? std::nullopt : std::optional(answer);
        }
        if (byte[0] == '\n') {
            return answer;
        }
        answer += byte[0];
    }
}

}  // namespace

void ConnectToMachine(Environment& environment) {
    Sink& err = environment.streams.err;
    environment.platform.settings = std::make_shared<platform::TomlSettings>(
        platform::UserConfigFolder(), [&err](const platform::SettingsNotice& notice) { Warn(err, notice); });
    environment.platform.clock = std::make_shared<platform::SystemClock>();
    environment.platform.regional = std::make_shared<platform::SystemRegionalTexts>();
    if (const auto state = platform::UserStateFolder(); !state.empty()) {
        environment.stateFolder = state / platform::ApplicationFolderName(constants::SettingsApplication);
    }
    environment.identity = std::make_shared<platform::MachineIdentity>();
    environment.platform.databaseEngine = std::make_shared<platform::SqliteEngine>(
        [&err](const platform::DatabaseNotice& notice) { WarnOfDatabase(err, notice); });
    environment.platform.libraryFolder = ProgramFolder();
    if (environment.streams.errIsTerminal && ::isatty(STDIN_FILENO) == 1) {
        environment.ask = [&streams = environment.streams](std::string_view question) {
            return AskAtTerminal(streams, question);
        };
    }
}

}  // namespace lintara::cli
