#include "platform/database_file.h"

#include "base/constants.h"
#include "base/utf8.h"
#include "platform/database_kind.h"
#include "platform/sqlite_engine.h"

#include <string_view>
#include <system_error>

namespace lintara::platform {

namespace fs = std::filesystem;

namespace {

struct MakingStep {
    std::string_view sql;
    std::string_view reason = {};  // of its failure, where the engine's own says too little
};

constexpr MakingStep steps[] = {
    {"BEGIN IMMEDIATE"},
    {"CREATE TABLE IF NOT EXISTS CPBuffers ([Key] INTEGER NOT NULL, [Code] TEXT)"},
    {"SELECT [Key], [Code] FROM CPBuffers", "its table CPBuffers lacks the field Key or Code"},
    {"CREATE UNIQUE INDEX IF NOT EXISTS [Key] ON CPBuffers ([Key])"},
    {"COMMIT"},
};

Result<void> MakeTable(const fs::path& file) {
    using Mode = SqliteConnection::Mode;
    return Then(SqliteConnection::Open(file, SqliteEngine::usualPatience, Mode::Create),
                [](SqliteConnection connection) -> Result<void> {
                    for (const MakingStep& step : steps) {
                        if (const Result<void> done = connection.Run(step.sql); !done) {
                            return step.reason.empty() ? done
                                                       : Failure(ErrorNumber::HostFailure, step.reason);
                        }
                    }
                    return {};
                });
}

// Whether the table is there and can be searched.
Result<void> CheckTable(const fs::path& file) {
    return Then(
        SqliteRecordset::Open(file, SqliteEngine::usualPatience, {}),
        [](const std::shared_ptr<SqliteRecordset>& rows) { return rows->SetIndex(constants::BuffersIndex); });
}

Result<void> CheckIsOurs(const fs::path& file) {
    return Then(KindOfDatabase(file), [](DatabaseKind kind) -> Result<void> {
        if (kind == DatabaseKind::Sqlite) {
            return {};
        }
        return Failure(
            ErrorNumber::HostFailure,
            kind == DatabaseKind::Jet
                ? "a code database of the old format is there; make the new one in another folder, "
                  "and 'lintara buffer import' copies its buffers"
                : "another file is there");
    });
}

}  // namespace

fs::path CodeDatabaseFileIn(const fs::path& folder) {
    return folder / ToUtf8(constants::CodeDatabaseFile.substr(1));
}

Result<Creation> CreateCodeDatabase(const fs::path& folder) {
    const fs::path file = CodeDatabaseFileIn(folder);
    std::error_code error;
    fs::create_directories(folder, error);
    if (!fs::is_directory(folder, error)) {
        return Failure(ErrorNumber::HostFailure, "its folder cannot be made");
    }
    if (fs::exists(fs::symlink_status(file, error))) {
        if (const Result<void> ours = CheckIsOurs(file); !ours) {
            return std::unexpected(ours.error());
        }
        if (CheckTable(file)) {
            return Creation::WasThere;
        }
    }
    const Result<void> made = Then(MakeTable(file), [&] { return CheckTable(file); });
    return Then(made, [] { return Result<Creation>(Creation::Made); });
}

}  // namespace lintara::platform
