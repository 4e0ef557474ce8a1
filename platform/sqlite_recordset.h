// The table of the code database as a recordset over SQLite.
//
// All that is read through one recordset is of one moment, and all that is written is one transaction, which
// begins with the first Update and is committed when the recordset is closed or let go of. A process that
// dies before leaves the earlier rows: the next one that opens the file finds SQLite's journal beside it and
// undoes what was half written. One that dies after it leaves the new rows.
//
// A row is written by its key, whatever was found when it was sought: another program may have stored it or
// deleted it meanwhile. Whoever commits last wins.
//
// After a failure of the engine every further call fails, and nothing is stored. A row whose `Code` holds no
// text is none: only reading that field fails, and the row can be written anew.
#pragma once

#include "hostmodel/database.h"
#include "platform/sqlite_connection.h"

#include <functional>
#include <optional>
#include <string>

namespace lintara::platform {

// What a person should know about a database file.
struct DatabaseNotice {
    std::filesystem::path file;
    std::string text;  // "the changes were not stored: the disk is full"
};

using DatabaseNoticeSink = std::function<void(const DatabaseNotice&)>;

class SqliteRecordset final : public hostmodel::Recordset {
  public:
    // Fails when the file cannot be opened or has no such table. `notify` hears of changes that could not be
    // stored when the recordset was let go of: nobody else would.
    [[nodiscard]] static Result<std::shared_ptr<SqliteRecordset>> Open(const std::filesystem::path& file,
                                                                       std::chrono::milliseconds patience,
                                                                       DatabaseNoticeSink notify);
    ~SqliteRecordset() override;
    SqliteRecordset(const SqliteRecordset&) = delete;
    SqliteRecordset& operator=(const SqliteRecordset&) = delete;

    [[nodiscard]] Result<void> Close() override;
    [[nodiscard]] Result<void> SetIndex(TextView name) override;
    [[nodiscard]] Result<void> Seek(TextView comparison, std::int32_t key) override;
    [[nodiscard]] Result<bool> NoMatch() override;
    [[nodiscard]] Result<void> AddNew() override;
    // A stored row keeps its key.
    [[nodiscard]] Result<void> Edit() override;
    [[nodiscard]] Result<void> Update() override;
    [[nodiscard]] Result<hostmodel::Value> Field(TextView name) override;
    [[nodiscard]] Result<void> SetField(TextView name, const hostmodel::Value& value) override;

  private:
    struct Row {
        std::optional<std::int32_t> key;
        Result<hostmodel::Value> code;  // a failure when what is stored is no text
        bool isNew = false;
    };

    SqliteRecordset(SqliteConnection connection, std::filesystem::path file, DatabaseNoticeSink notify);

    [[nodiscard]] Result<void> CheckTable();
    [[nodiscard]] Result<void> BeginReading();
    [[nodiscard]] Result<void> BeginWriting();
    [[nodiscard]] Result<std::optional<Row>> Find(std::int32_t key);
    [[nodiscard]] Result<void> Write(const Row& row);
    [[nodiscard]] Result<void> CheckKept(std::int32_t key);
    [[nodiscard]] Result<void> Commit();
    // Remembers the first failure of the engine.
    template <class T>
    [[nodiscard]] Result<T> Noted(Result<T> result);
    // The failure that has made an end of this recordset.
    [[nodiscard]] Result<void> Usable() const;

    enum class Transaction { None, Reading, Writing };

    std::optional<SqliteConnection> connection_;  // none when it is closed
    std::filesystem::path file_;
    DatabaseNoticeSink notify_;
    Transaction transaction_ = Transaction::None;
    std::optional<HostError> failure_;
    bool hasChanges_ = false;
    bool isIndexed_ = false;
    bool hasSought_ = false;
    std::optional<Row> current_;
    std::optional<Row> pending_;
};

}  // namespace lintara::platform
