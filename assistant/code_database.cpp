#include "assistant/code_database.h"

#include "base/constants.h"
#include "base/statement.h"

#include <optional>
#include <utility>

namespace lintara::assistant {
namespace {

constexpr SettingName RememberedFolder = {constants::SettingsApplication, constants::AssistantsSection,
                                          constants::CodeDbPathKey};

// One search for the database. The folder is always that of the services object: where it cannot be set, the
// earlier one counts.
class Search {
  public:
    Search(hostmodel::Globals& globals, const Platform& platform) : globals_(globals), platform_(platform) {}

    void Run() {
        TakeRememberedFolder();
        if (!Folder().empty()) {
            SearchIn(Folder());
        } else {
            SearchBesideLibrary();
        }
    }

  private:
    [[nodiscard]] Text Folder() const {
        Text folder;
        Assign(folder, globals_.CodeDbPath());
        return folder;
    }

    void TakeRememberedFolder() {
        Result<std::optional<Text>> found = std::nullopt;
        if (platform_.settings != nullptr) {
            found = platform_.settings->Find(RememberedFolder);
        }
        if (found) {
            Attempt(globals_.SetCodeDbPath(found->value_or(Text())));
        }
    }

    // What the settings remember is not remembered again.
    void SearchIn(const Text& folder) {
        if (HasDatabase(folder)) {
            Open();
        } else {
            AskUser(folder);
        }
    }

    void SearchBesideLibrary() {
        if (!platform_.libraryFolder.empty() && HasDatabase(platform_.libraryFolder)) {
            Attempt(globals_.SetCodeDbPath(platform_.libraryFolder));
            Open();
            Remember();
        } else {
            AskUser({});
        }
    }

    // Without an answer the folder of the services object stays; with "" the user has given up.
    void AskUser(const Text& triedFolder) {
        const auto locator = platform_.makeDatabaseLocator ? platform_.makeDatabaseLocator() : nullptr;
        if (locator == nullptr) {
            return;
        }
        if (const Result<Text> chosen = locator->BrowseForCodeDb(triedFolder)) {
            Attempt(globals_.SetCodeDbPath(*chosen));
        }
        if (!Folder().empty()) {
            Open();
            Remember();
        }
    }

    [[nodiscard]] bool HasDatabase(const Text& folder) const {
        bool exists = false;
        if (platform_.databaseEngine != nullptr) {
            Assign(exists, platform_.databaseEngine->FileExists(folder + Text(constants::CodeDatabaseFile)));
        }
        return exists;
    }

    void Open() {
        if (platform_.databaseEngine == nullptr) {
            return;
        }
        Attempt(Then(globals_.CodeDbPath(), [&](const Text& folder) {
            return Then(platform_.databaseEngine->OpenDatabase(folder + Text(constants::CodeDatabaseFile)),
                        [&](std::shared_ptr<hostmodel::Database> database) {
                            return globals_.SetCodeDb(std::move(database));
                        });
        }));
    }

    void Remember() {
        if (platform_.settings == nullptr) {
            return;
        }
        Attempt(Then(globals_.CodeDbPath(),
                     [&](const Text& folder) { return platform_.settings->Save(RememberedFolder, folder); }));
    }

    hostmodel::Globals& globals_;
    const Platform& platform_;
};

}  // namespace

void OpenCodeDatabase(hostmodel::Globals& globals, const Platform& platform) {
    std::shared_ptr<hostmodel::Database> open;
    Assign(open, globals.CodeDb());
    if (open == nullptr) {
        Search(globals, platform).Run();
    }
}

}  // namespace lintara::assistant
