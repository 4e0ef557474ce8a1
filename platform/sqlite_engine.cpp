#include "platform/sqlite_engine.h"

#include "base/constants.h"
#include "platform/database_kind.h"
#include "platform/path_text.h"

#include <system_error>
#include <utility>

namespace lintara::platform {

namespace fs = std::filesystem;

namespace {

class SqliteDatabase final : public hostmodel::Database {
  public:
    SqliteDatabase(fs::path file, DatabaseNoticeSink notify, std::chrono::milliseconds patience)
        : file_(std::move(file)), notify_(std::move(notify)), patience_(patience) {}

    // The code database has one table.
    [[nodiscard]] Result<std::shared_ptr<hostmodel::Recordset>> OpenTable(TextView table) override {
        if (table != constants::BuffersTable) {
            return Failure(ErrorNumber::InvalidArgument, "it has no table of that name");
        }
        return Then(SqliteRecordset::Open(file_, patience_, notify_),
                    [](std::shared_ptr<hostmodel::Recordset> rows) {
                        return Result<std::shared_ptr<hostmodel::Recordset>>(std::move(rows));
                    });
    }

  private:
    fs::path file_;
    DatabaseNoticeSink notify_;
    std::chrono::milliseconds patience_;
};

Result<void> CheckKind(const fs::path& file) {
    return Then(KindOfDatabase(file), [](DatabaseKind kind) -> Result<void> {
        switch (kind) {
            case DatabaseKind::Sqlite:
                return {};
            case DatabaseKind::Jet:
                return Failure(ErrorNumber::HostFailure,
                               "it is a code database of the old format; make a new one with 'lintara buffer "
                               "init', then 'lintara buffer import' copies the buffers");
            case DatabaseKind::Other:
                break;
        }
        return Failure(ErrorNumber::HostFailure, "it is no code database");
    });
}

// Reads the beginning of the file, and undoes what a process that died may have left half done.
Result<void> CheckReadable(const fs::path& file, std::chrono::milliseconds patience) {
    return Then(SqliteConnection::Open(file, patience), [](SqliteConnection connection) {
        return Then(connection.Prepare("SELECT 1 FROM sqlite_schema"), [](SqliteStatement statement) {
            return Then(statement.Step(), [](bool) { return Result<void>(); });
        });
    });
}

}  // namespace

Result<bool> SqliteEngine::FileExists(TextView path) {
    const auto file = FilePathFromText(path);
    if (!file) {
        return false;
    }
    std::error_code error;
    return fs::is_regular_file(*file, error);
}

Result<std::shared_ptr<hostmodel::Database>> SqliteEngine::OpenDatabase(TextView path) {
    const auto file = FilePathFromText(path);
    if (!file) {
        return Failure(ErrorNumber::InvalidArgument, "no file can have that path");
    }
    return OpenFile(*file);
}

Result<std::shared_ptr<hostmodel::Database>> SqliteEngine::OpenFile(const fs::path& file) const {
    using Handle = std::shared_ptr<hostmodel::Database>;
    const Result<void> kind = CheckKind(file);
    const Result<void> readable = Then(kind, [&] { return CheckReadable(file, patience_); });
    return Then(readable,
                [&] { return Result<Handle>(std::make_shared<SqliteDatabase>(file, notify_, patience_)); });
}

}  // namespace lintara::platform
