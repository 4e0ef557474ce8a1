#include "platform/sqlite_connection.h"

#include "base/utf8.h"
#include "platform/stored_text.h"

#include <algorithm>
#include <sqlite3.h>
#include <thread>
#include <utility>

namespace lintara::platform {

namespace {

using std::chrono::milliseconds;

constexpr milliseconds longestPause{50};

std::string_view ReasonOf(int code) {
    switch (code & 0xFF) {
        case SQLITE_BUSY:
        case SQLITE_LOCKED:
            return "it is locked by another program";
        case SQLITE_READONLY:
            return "it is write-protected";
        case SQLITE_CORRUPT:
            return "it is damaged";
        case SQLITE_NOTADB:
            return "it is no code database";
        case SQLITE_FULL:
            return "the disk is full";
        case SQLITE_CANTOPEN:
            return "it, or the journal beside it, cannot be opened";
        case SQLITE_PERM:
        case SQLITE_AUTH:
            return "access to it is denied";
        case SQLITE_IOERR:
            return "it cannot be read or written";
        case SQLITE_CONSTRAINT:
            return "its own rules forbid the change";
        case SQLITE_TOOBIG:
            return "a text is too long for it";
        case SQLITE_NOMEM:
            return "there is not enough memory for it";
        default:
            return "the database engine failed";
    }
}

Result<void> Check(int code) {
    if (code == SQLITE_OK) {
        return {};
    }
    return std::unexpected(SqliteError(code));
}

// Called when somebody else has locked the file: 1 to try again. The longer it takes, the longer the pauses.
int WaitForLock(void* patience, int attempt) {
    auto& left = *static_cast<milliseconds*>(patience);
    const milliseconds pause = std::min({milliseconds(1 + 2 * attempt), longestPause, left});
    if (pause <= milliseconds::zero()) {
        return 0;
    }
    std::this_thread::sleep_for(pause);
    left -= pause;
    return 1;
}

std::string_view BytesOf(const void* bytes, int size) {
    return {static_cast<const char*>(bytes), static_cast<std::size_t>(size)};
}

}  // namespace

HostError SqliteError(int code) {
    const bool outOfMemory = (code & 0xFF) == SQLITE_NOMEM;
    return {outOfMemory ? ErrorNumber::OutOfMemory : ErrorNumber::HostFailure, ReasonOf(code)};
}

void SqliteStatement::Finalize::operator()(sqlite3_stmt* statement) const {
    // It repeats the error of the last step, which is known.
    sqlite3_finalize(statement);
}

Result<void> SqliteStatement::Bind(int parameter, std::int32_t value) {
    return Check(sqlite3_bind_int(statement_.get(), parameter, value));
}

Result<void> SqliteStatement::Bind(int parameter, TextView value) {
    const StoredText stored = ToStoredText(value);
    const auto size = static_cast<sqlite3_uint64>(stored.bytes.size());
    return Check(stored.isBlob ? sqlite3_bind_blob64(statement_.get(), parameter, stored.bytes.data(), size,
                                                     SQLITE_TRANSIENT)
                               : sqlite3_bind_text64(statement_.get(), parameter, stored.bytes.data(), size,
                                                     SQLITE_TRANSIENT, SQLITE_UTF8));
}

Result<bool> SqliteStatement::Step() {
    const int code = sqlite3_step(statement_.get());
    if (code == SQLITE_ROW || code == SQLITE_DONE) {
        return code == SQLITE_ROW;
    }
    return std::unexpected(SqliteError(code));
}

bool SqliteStatement::IsNull(int column) const {
    return sqlite3_column_type(statement_.get(), column) == SQLITE_NULL;
}

Result<Text> SqliteStatement::TextOf(int column) const {
    if (sqlite3_column_type(statement_.get(), column) == SQLITE_BLOB) {
        const void* blob = sqlite3_column_blob(statement_.get(), column);
        auto text = FromBlob(BytesOf(blob, sqlite3_column_bytes(statement_.get(), column)));
        if (!text) {
            return Failure(ErrorNumber::TypeMismatch, "a field of it holds no text");
        }
        return *std::move(text);
    }
    const unsigned char* text = sqlite3_column_text(statement_.get(), column);
    return FromUtf8(BytesOf(text, sqlite3_column_bytes(statement_.get(), column)));
}

void SqliteConnection::Close::operator()(sqlite3* connection) const {
    // An open transaction is rolled back.
    sqlite3_close_v2(connection);
}

Result<SqliteConnection> SqliteConnection::Open(const std::filesystem::path& file, milliseconds patience,
                                                Mode mode) {
    SqliteConnection opened;
    opened.patience_ = std::make_unique<milliseconds>(patience);
    const int flags =
        SQLITE_OPEN_READWRITE | SQLITE_OPEN_EXRESCODE | (mode == Mode::Create ? SQLITE_OPEN_CREATE : 0);
    sqlite3* connection = nullptr;
    const int code = sqlite3_open_v2(file.c_str(), &connection, flags, nullptr);
    opened.connection_.reset(connection);
    if (code != SQLITE_OK) {
        return std::unexpected(SqliteError(code));
    }
    if (const Result<void> prepared = opened.Configure(); !prepared) {
        return std::unexpected(prepared.error());
    }
    return opened;
}

Result<void> SqliteConnection::Configure() {
    sqlite3* connection = connection_.get();
    sqlite3_busy_handler(connection, WaitForLock, patience_.get());
    sqlite3_db_config(connection, SQLITE_DBCONFIG_DEFENSIVE, 1, nullptr);
    sqlite3_db_config(connection, SQLITE_DBCONFIG_TRUSTED_SCHEMA, 0, nullptr);
    sqlite3_db_config(connection, SQLITE_DBCONFIG_ENABLE_TRIGGER, 0, nullptr);
    sqlite3_db_config(connection, SQLITE_DBCONFIG_ENABLE_VIEW, 0, nullptr);
    // Changes stay in memory until they are committed, so nobody else is locked out before; and what is
    // committed is on the disk, the names in the folder included.
    for (const std::string_view setting :
         {"PRAGMA cell_size_check=ON", "PRAGMA cache_spill=OFF", "PRAGMA synchronous=EXTRA"}) {
        if (const Result<void> done = Run(setting); !done) {
            return done;
        }
    }
    return {};
}

Result<SqliteStatement> SqliteConnection::Prepare(std::string_view sql) {
    sqlite3_stmt* statement = nullptr;
    const int code =
        sqlite3_prepare_v2(connection_.get(), sql.data(), static_cast<int>(sql.size()), &statement, nullptr);
    SqliteStatement prepared(statement);
    if (code != SQLITE_OK) {
        return std::unexpected(SqliteError(code));
    }
    return prepared;
}

Result<void> SqliteConnection::Run(std::string_view sql) {
    return Then(Prepare(sql), [](SqliteStatement statement) {
        return Then(statement.Step(), [](bool) { return Result<void>(); });
    });
}

std::int64_t SqliteConnection::changes() const {
    return sqlite3_changes64(connection_.get());
}

}  // namespace lintara::platform
