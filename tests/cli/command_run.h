// Runs command lines in process over a folder of its own, which is removed at the end.
#pragma once

#include "cli/command.h"
#include "platform/memory_settings.h"
#include "tests/support/temporary_folder.h"

#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace lintara::cli {

struct Outcome {
    int status = -1;
    std::string out;
    std::string err;
};

class CommandTest {
  public:
    [[nodiscard]] const std::filesystem::path& folder() const { return folder_.path(); }
    // Below the folder.
    [[nodiscard]] std::string Path(std::string_view name) const { return (folder_ / name).string(); }

    void Write(std::string_view name, std::string_view bytes) const { folder_.Write(name, bytes); }
    [[nodiscard]] std::string Read(std::string_view name) const { return folder_.Read(name); }
    [[nodiscard]] std::map<std::string, std::string> Files() const { return folder_.Files(); }

    // A project "Shop" of the modules Main and Stock, with CR LF.
    void WriteShop() const;

    // The words of the line; a word that begins with '@' is a path below the folder.
    Outcome Run(std::string_view line) const;
    Outcome Run(const std::vector<std::string>& arguments) const;

    // What every run reads from standard input.
    std::string input;
    // The user's settings, kept from run to run.
    std::shared_ptr<SettingsStore> settings = std::make_shared<platform::MemorySettings>();

    // Where a code database may lie beside the program.
    Text libraryFolder;
    // What the person at the terminal answers, one line after the other; nobody sits there without it.
    std::optional<std::vector<std::string>> answers;

    bool outIsTerminal = false;
    bool errIsTerminal = false;
    bool wantsColor = true;

    // What programs keep for the user, kept from run to run.
    [[nodiscard]] const std::filesystem::path& stateFolder() const { return state_.path(); }

  private:
    support::TemporaryFolder folder_;
    support::TemporaryFolder state_;
};

// The text with every occurrence replaced.
[[nodiscard]] std::string Replaced(std::string_view text, std::string_view sought,
                                   std::string_view replacement);

}  // namespace lintara::cli
