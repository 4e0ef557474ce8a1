#include "platform/sqlite_recordset.h"

#include "base/constants.h"

#include <algorithm>
#include <utility>

namespace lintara::platform {

using hostmodel::Value;

namespace {

constexpr auto WrongUse = ErrorNumber::InvalidArgument;

// Names of the database count without regard to the case of their letters, which are A to Z.
bool IsName(TextView name, TextView wanted) {
    const auto folded = [](char16_t c) {
        return c >= u'A' && c <= u'Z' ? static_cast<char16_t>(c + 0x20) : c;
    };
    return std::ranges::equal(name, wanted, {}, folded, folded);
}

// Whether the statement, with `value` as its parameter, has a row to give.
template <class Parameter>
Result<bool> HasRow(SqliteConnection& connection, std::string_view sql, Parameter value) {
    return Then(connection.Prepare(sql), [&](SqliteStatement statement) {
        return Then(statement.Bind(1, value), [&] { return statement.Step(); });
    });
}

Result<void> Require(const Result<bool>& condition, std::string_view reason) {
    return Then(condition, [&](bool holds) -> Result<void> {
        if (!holds) {
            return Failure(ErrorNumber::HostFailure, reason);
        }
        return {};
    });
}

std::unexpected<HostError> NoSuchField() {
    return Failure(WrongUse, "the table has no field of that name");
}

}  // namespace

SqliteRecordset::SqliteRecordset(SqliteConnection connection, std::filesystem::path file,
                                 DatabaseNoticeSink notify)
    : connection_(std::move(connection)), file_(std::move(file)), notify_(std::move(notify)) {}

SqliteRecordset::~SqliteRecordset() {
    try {
        const Result<void> closed = Close();
        if (!closed && notify_) {
            notify_({file_, "the changes were not stored: " + std::string(closed.error().reason)});
        }
    } catch (...) {
        // The failure could not be told; nothing is half stored.
    }
}

Result<std::shared_ptr<SqliteRecordset>> SqliteRecordset::Open(const std::filesystem::path& file,
                                                               std::chrono::milliseconds patience,
                                                               DatabaseNoticeSink notify) {
    using Handle = std::shared_ptr<SqliteRecordset>;
    return Then(SqliteConnection::Open(file, patience), [&](SqliteConnection connection) -> Result<Handle> {
        const Handle rows(new SqliteRecordset(std::move(connection), file, std::move(notify)));
        return Then(rows->CheckTable(), [&] { return Result<Handle>(rows); });
    });
}

template <class T>
Result<T> SqliteRecordset::Noted(Result<T> result) {
    if (!result && !failure_) {
        failure_ = result.error();
    }
    return result;
}

Result<void> SqliteRecordset::Usable() const {
    if (failure_) {
        return std::unexpected(*failure_);
    }
    if (!connection_) {
        return Failure(WrongUse, "the recordset is closed");
    }
    return {};
}

Result<void> SqliteRecordset::CheckTable() {
    const Result<void> there = Require(
        HasRow(*connection_, "SELECT 1 FROM sqlite_schema WHERE type = 'table' AND name = ?1 COLLATE NOCASE",
               constants::BuffersTable),
        "it has no table CPBuffers");
    // The field names stand in brackets: in quotes, one that there is not would count as a text.
    return Then(there, [&]() -> Result<void> {
        if (!connection_->Prepare("SELECT [Key], [Code] FROM CPBuffers")) {
            return Failure(ErrorNumber::HostFailure, "its table CPBuffers lacks the field Key or Code");
        }
        return {};
    });
}

Result<void> SqliteRecordset::SetIndex(TextView name) {
    const Result<void> usable = Usable();
    return Then(usable, [&] {
        const Result<void> indexed =
            Noted(Require(HasRow(*connection_,
                                 "SELECT 1 FROM pragma_index_list('CPBuffers') AS list "
                                 "JOIN pragma_index_info(list.name) AS info "
                                 "WHERE list.name = ?1 COLLATE NOCASE AND info.seqno = 0 "
                                 "AND info.name = 'Key' COLLATE NOCASE",
                                 name),
                          "its table CPBuffers has no such index"));
        isIndexed_ = isIndexed_ || indexed.has_value();
        return indexed;
    });
}

Result<void> SqliteRecordset::BeginReading() {
    if (transaction_ != Transaction::None) {
        return {};
    }
    return Then(connection_->Run("BEGIN"), [&] {
        transaction_ = Transaction::Reading;
        return Result<void>();
    });
}

// Two that read and then both want to write would wait for each other; so reading ends first.
Result<void> SqliteRecordset::BeginWriting() {
    if (transaction_ == Transaction::Writing) {
        return {};
    }
    Result<void> ready;
    if (transaction_ == Transaction::Reading) {
        ready = connection_->Run("COMMIT");
        transaction_ = Transaction::None;
    }
    const Result<void> begun = Then(ready, [&] { return connection_->Run("BEGIN IMMEDIATE"); });
    return Then(begun, [&] {
        transaction_ = Transaction::Writing;
        return Result<void>();
    });
}

Result<std::optional<SqliteRecordset::Row>> SqliteRecordset::Find(std::int32_t key) {
    using Found = Result<std::optional<Row>>;
    auto prepared = connection_->Prepare("SELECT [Code] FROM CPBuffers WHERE [Key] = ?1 LIMIT 1");
    return Then(std::move(prepared), [&](SqliteStatement statement) {
        const Result<bool> found = Then(statement.Bind(1, key), [&] { return statement.Step(); });
        return Then(found, [&](bool isRow) -> Found {
            if (!isRow) {
                return std::nullopt;
            }
            if (statement.IsNull(0)) {
                return Row{.key = key, .code = Value()};
            }
            auto code = Then(statement.TextOf(0), [](Text text) { return Result<Value>(std::move(text)); });
            return Row{.key = key, .code = std::move(code)};
        });
    });
}

Result<void> SqliteRecordset::Seek(TextView comparison, std::int32_t key) {
    current_.reset();
    hasSought_ = false;
    if (const Result<void> usable = Usable(); !usable) {
        return usable;
    }
    if (!isIndexed_ || comparison != u"=") {
        return Failure(WrongUse, "seeking needs an index and the comparison =");
    }
    auto found = Noted(Then(BeginReading(), [&] { return Find(key); }));
    return Then(std::move(found), [&](std::optional<Row> row) {
        current_ = std::move(row);
        hasSought_ = true;
        return Result<void>();
    });
}

Result<bool> SqliteRecordset::NoMatch() {
    const Result<void> usable = Usable();
    return Then(usable, [&]() -> Result<bool> {
        if (!hasSought_) {
            return Failure(WrongUse, "nothing was sought");
        }
        return !current_.has_value();
    });
}

Result<void> SqliteRecordset::AddNew() {
    const Result<void> usable = Usable();
    return Then(usable, [&] {
        pending_ = Row{.key = std::nullopt, .code = Value(), .isNew = true};
        return Result<void>();
    });
}

Result<void> SqliteRecordset::Edit() {
    const Result<void> usable = Usable();
    return Then(usable, [&]() -> Result<void> {
        if (!current_) {
            return Failure(WrongUse, "there is no current row");
        }
        pending_ = current_;
        return {};
    });
}

Result<void> SqliteRecordset::Write(const Row& row) {
    const auto run = [&](std::string_view sql) {
        return Then(connection_->Prepare(sql), [&](SqliteStatement statement) {
            Result<void> bound = statement.Bind(1, *row.key);
            if (const Text* code = std::get_if<Text>(&*row.code)) {
                bound = Then(bound, [&] { return statement.Bind(2, *code); });
            }
            return Then(bound, [&] { return statement.Step(); });
        });
    };
    const Result<bool> updated = run("UPDATE CPBuffers SET [Code] = ?2 WHERE [Key] = ?1");
    const Result<bool> written = Then(updated, [&](bool) {
        return connection_->changes() > 0 ? Result<bool>(true)
                                          : run("INSERT INTO CPBuffers ([Key], [Code]) VALUES (?1, ?2)");
    });
    return Then(written, [&](bool) { return CheckKept(*row.key); });
}

// Tables that others made may turn texts that look like numbers into numbers: 0012 into 12.
Result<void> SqliteRecordset::CheckKept(std::int32_t key) {
    return Require(
        HasRow(*connection_,
               "SELECT 1 FROM CPBuffers WHERE [Key] = ?1 AND typeof([Code]) NOT IN ('integer', 'real')", key),
        "its field Code makes numbers of texts");
}

Result<void> SqliteRecordset::Update() {
    if (const Result<void> usable = Usable(); !usable) {
        return usable;
    }
    if (!pending_ || !pending_->key) {
        return Failure(WrongUse, "there is no row to write, or it has no key");
    }
    if (!pending_->code) {
        return std::unexpected(pending_->code.error());
    }
    hasChanges_ = true;
    const Row row = *std::exchange(pending_, std::nullopt);
    return Noted(Then(BeginWriting(), [&] { return Write(row); }));
}

Result<Value> SqliteRecordset::Field(TextView name) {
    const Result<void> usable = Usable();
    return Then(usable, [&]() -> Result<Value> {
        if (!current_) {
            return Failure(WrongUse, "there is no current row");
        }
        if (IsName(name, constants::BufferKeyField)) {
            return *current_->key;
        }
        if (IsName(name, constants::BufferCodeField)) {
            return current_->code;
        }
        return NoSuchField();
    });
}

Result<void> SqliteRecordset::SetField(TextView name, const Value& value) {
    if (const Result<void> usable = Usable(); !usable) {
        return usable;
    }
    if (!pending_) {
        return Failure(WrongUse, "no row is being changed");
    }
    if (IsName(name, constants::BufferCodeField)) {
        if (!std::holds_alternative<Text>(value) && !std::holds_alternative<std::monostate>(value)) {
            return Failure(ErrorNumber::TypeMismatch, "the field Code holds texts");
        }
        pending_->code = value;
        return {};
    }
    if (!IsName(name, constants::BufferKeyField)) {
        return NoSuchField();
    }
    const auto* key = std::get_if<std::int32_t>(&value);
    if (key == nullptr || (!pending_->isNew && *key != pending_->key)) {
        return Failure(ErrorNumber::TypeMismatch, "the field Key holds a number, which a stored row keeps");
    }
    pending_->key = *key;
    return {};
}

Result<void> SqliteRecordset::Commit() {
    if (failure_) {
        return std::unexpected(*failure_);
    }
    return connection_->Run("COMMIT");
}

// Closing the connection rolls back what was not committed.
Result<void> SqliteRecordset::Close() {
    if (!connection_) {
        return {};
    }
    current_.reset();
    pending_.reset();
    const Result<void> committed = hasChanges_ ? Commit() : Result<void>();
    connection_.reset();
    return committed;
}

}  // namespace lintara::platform
