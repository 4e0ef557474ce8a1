#include "cli/buffers/code_database.h"

#include "assistant/buffer_rows.h"
#include "assistant/lintara.h"
#include "base/constants.h"
#include "base/settings_table.h"
#include "cli/output/terminal_text.h"
#include "cli/project/open_project.h"
#include "platform/database_file.h"
#include "platform/path_text.h"
#include "workspace/workspace.h"

#include <stdexcept>
#include <utility>

namespace lintara::cli {

namespace fs = std::filesystem;

using hostmodel::Database;
using hostmodel::Recordset;

namespace {

constexpr std::string_view WhatToDo =
    "'lintara buffer init DIR' makes a code database and remembers it, 'lintara buffer list --database DIR' "
    "remembers one that there is";

std::runtime_error ErrorAt(const fs::path& file, std::string_view reason) {
    return std::runtime_error(file.string() + ": " + std::string(reason));
}

Text FileTextIn(TextView folder) {
    return Text(folder) + Text(constants::CodeDatabaseFile);
}

fs::path FileIn(TextView folder) {
    return platform::FilePathFromText(FileTextIn(folder)).value_or(fs::path());
}

// The library swallows what goes wrong; this keeps it for the person who wants to know.
class WatchedEngine final : public hostmodel::DatabaseEngine {
  public:
    explicit WatchedEngine(std::shared_ptr<DatabaseEngine> inner) : inner_(std::move(inner)) {}

    [[nodiscard]] Result<bool> FileExists(TextView path) override { return inner_->FileExists(path); }
    [[nodiscard]] Result<std::shared_ptr<Database>> OpenDatabase(TextView path) override {
        auto opened = inner_->OpenDatabase(path);
        if (!opened) {
            failedPath_ = path;
            reason_ = opened.error().reason;
        }
        return opened;
    }

    // Of what could not be opened.
    [[nodiscard]] const std::optional<Text>& failedPath() const { return failedPath_; }
    [[nodiscard]] std::string_view reason() const { return reason_; }

  private:
    std::shared_ptr<DatabaseEngine> inner_;
    std::optional<Text> failedPath_;
    std::string_view reason_;
};

// Answers for the user what the command line says, else asks at the terminal.
class CommandLocator final : public hostmodel::DatabaseLocator {
  public:
    CommandLocator(std::optional<Text> folder, Environment& environment)
        : folder_(std::move(folder)), environment_(environment) {}

    [[nodiscard]] Result<Text> BrowseForCodeDb(TextView folder) override {
        triedFolder_ = folder;
        return folder_ ? *folder_ : environment_.ask ? Ask() : Text();
    }

    // Of a folder that was remembered and holds no database any more; else "".
    [[nodiscard]] const Text& triedFolder() const { return triedFolder_; }

  private:
    // Until the answer is of use, or empty: a wrong one would be remembered.
    [[nodiscard]] Text Ask() const {
        std::string question =
            triedFolder_.empty() ? "" : "There is no " + PrintablePath(FileIn(triedFolder_)) + ".\n";
        question += "Folder of the code database Assistants.mdb (empty: none): ";
        while (true) {
            const auto answer = environment_.ask(question);
            if (!answer || answer->empty()) {
                return {};
            }
            const Text folder = platform::FolderToText(*answer);
            const auto opened = environment_.platform.databaseEngine->OpenDatabase(FileTextIn(folder));
            if (opened) {
                return folder;
            }
            question = PrintablePath(FileIn(folder)) + ": " + std::string(opened.error().reason) +
                       "\nAnother folder (empty: none): ";
        }
    }

    std::optional<Text> folder_;
    Environment& environment_;
    Text triedFolder_;
};

[[noreturn]] void ThrowNotFound(const WatchedEngine& engine, const CommandLocator& locator) {
    if (engine.failedPath()) {
        const auto file = platform::FilePathFromText(*engine.failedPath());
        throw ErrorAt(file.value_or(fs::path()), engine.reason());
    }
    if (!locator.triedFolder().empty()) {
        throw ErrorAt(
            FileIn(locator.triedFolder()),
            "there is no such file, where the user's setting CodeDbPath leads; " + std::string(WhatToDo));
    }
    throw std::runtime_error("no code database is known; " + std::string(WhatToDo));
}

// The value; throws with a sentence that names the file.
template <class T>
T ValueOf(Result<T> result, const fs::path& file) {
    if (!result) {
        throw ErrorAt(file, result.error().reason);
    }
    if constexpr (!std::is_void_v<T>) {
        return *std::move(result);
    }
}

std::shared_ptr<Recordset> OpenRows(Database& database, const fs::path& file) {
    return ValueOf(assistant::OpenBufferRows(database), file);
}

// Ends the changes. The recordset is closed also after a failure, or it would tell it a second time.
void Finish(const Result<void>& stored, Recordset& rows, const fs::path& file) {
    const Result<void> closed = rows.Close();
    ValueOf(stored, file);
    ValueOf(closed, file);
}

}  // namespace

CodeDatabase::CodeDatabase(fs::path file, std::shared_ptr<Database> database)
    : file_(std::move(file)), database_(std::move(database)) {}

CodeDatabase CodeDatabase::Find(const DatabaseFolder& folder, Environment& environment) {
    if (environment.platform.databaseEngine == nullptr) {
        throw std::runtime_error("there is no database engine on this system");
    }
    const auto engine = std::make_shared<WatchedEngine>(environment.platform.databaseEngine);
    std::optional<Text> given;
    std::shared_ptr<Database> opened;
    if (folder) {
        given = platform::FolderToText(*folder);
        opened = ValueOf(engine->OpenDatabase(FileTextIn(*given)), FileIn(*given));
    }
    const auto locator = std::make_shared<CommandLocator>(given, environment);
    Platform platform = environment.platform;
    platform.databaseEngine = engine;
    platform.makeDatabaseLocator = [&] { return std::shared_ptr<hostmodel::DatabaseLocator>(locator); };
    workspace::Workspace nothing;
    Lintara lintara(std::move(platform));
    lintara.oG = MakeGlobals(nothing, environment);
    lintara.InitCodeAutomation();
    if (given) {
        return {FileIn(*given), std::move(opened)};
    }
    const auto database = lintara.oG->CodeDb().value_or(nullptr);
    if (database == nullptr) {
        ThrowNotFound(*engine, *locator);
    }
    return {FileIn(lintara.oG->CodeDbPath().value_or(Text())), database};
}

CodeDatabase::Buffers CodeDatabase::ReadAll() const {
    const auto rows = OpenRows(*database_, file_);
    Buffers buffers;
    for (std::size_t i = 0; i < buffers.size(); ++i) {
        buffers[i] =
            ValueOf(assistant::FindBufferRow(*rows, static_cast<std::int32_t>(i)), file_).value_or(Text());
    }
    return buffers;
}

Text CodeDatabase::Read(std::int32_t buffer) const {
    const auto rows = OpenRows(*database_, file_);
    return ValueOf(assistant::FindBufferRow(*rows, buffer), file_).value_or(Text());
}

// Only this row, unlike the library at the end of a session: two commands at a time that change different
// buffers do not undo each other's work.
void CodeDatabase::Store(std::int32_t buffer, TextView code) const {
    const auto rows = OpenRows(*database_, file_);
    Finish(assistant::StoreBufferRow(*rows, buffer, code), *rows, file_);
}

void CodeDatabase::StoreAll(const Buffers& buffers) const {
    const auto rows = OpenRows(*database_, file_);
    Result<void> stored;
    for (std::size_t i = 0; i < buffers.size(); ++i) {
        stored = Then(stored, [&] {
            return assistant::StoreBufferRow(*rows, static_cast<std::int32_t>(i), buffers[i]);
        });
    }
    Finish(stored, *rows, file_);
}

std::string InitCodeDatabase(const fs::path& folder, Environment& environment) {
    const Text folderText = platform::FolderToText(folder);
    const fs::path file = FileIn(folderText);
    const auto made = ValueOf(platform::CreateCodeDatabase(file.parent_path()), file);
    SettingsStore* settings = environment.platform.settings.get();
    if (settings == nullptr) {
        throw ErrorAt(file, "there are no settings on this system that could remember it");
    }
    const SettingName remembered = FindSetting(constants::CodeDbPathKey)->name();
    const Text before = settings->Get(remembered, u"");
    if (const Result<void> saved = settings->Save(remembered, folderText); !saved) {
        throw ErrorAt(file, "it is there, but cannot be remembered: " + std::string(saved.error().reason));
    }
    std::string done = PrintablePath(file) + (made == platform::Creation::Made ? " was made" : " was there");
    done += " and is the user's code database";
    if (!before.empty() && before != folderText) {
        done += " from now on, instead of " + PrintablePath(FileIn(before));
    }
    return done;
}

}  // namespace lintara::cli
