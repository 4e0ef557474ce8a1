// The code database over SQLite: texts, transactions, several programs at once, and files of all kinds.

#include "platform/database_file.h"
#include "platform/path_text.h"
#include "platform/sqlite_connection.h"
#include "platform/sqlite_engine.h"
#include "tests/support/other_process.h"
#include "tests/support/sqlite_shell.h"
#include "tests/support/temporary_folder.h"

#include <sqlite3.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::platform {
namespace {

namespace fs = std::filesystem;

using hostmodel::Recordset;
using hostmodel::Value;
using std::chrono::milliseconds;
using support::AskSqlite;
using testing::HasSubstr;
using testing::SizeIs;

void RunSqlite(const fs::path& file, std::string_view sql) {
    EXPECT_EQ(AskSqlite(file, sql), "");
}

class SqliteDatabaseTest : public testing::Test {
  protected:
    void SetUp() override { ASSERT_EQ(CreateCodeDatabase(folder_.path()), Creation::Made); }

    [[nodiscard]] fs::path File() const { return folder_ / "Assistants.mdb"; }
    [[nodiscard]] Text FileText() const { return PathToText(folder_.path()) + u"\\Assistants.mdb"; }

    // The table, indexed.
    std::shared_ptr<Recordset> Rows(milliseconds patience = milliseconds(200)) {
        SqliteEngine engine([this](const DatabaseNotice& notice) { notices_.push_back(notice.text); },
                            patience);
        const auto rows = engine.OpenDatabase(FileText()).value()->OpenTable(u"CPBuffers").value();
        EXPECT_TRUE(rows->SetIndex(u"Key"));
        return rows;
    }

    // Why the table cannot be opened; "" when it can.
    [[nodiscard]] std::string OpenError() const {
        SqliteEngine engine({}, milliseconds(50));
        const auto database = engine.OpenDatabase(FileText());
        if (!database) {
            return std::string(database.error().reason);
        }
        const auto rows = (*database)->OpenTable(u"CPBuffers");
        return rows ? "" : std::string(rows.error().reason);
    }

    static Result<void> Store(Recordset& rows, std::int32_t key, const Value& code) {
        const Result<void> sought = rows.Seek(u"=", key);
        const bool isNew = rows.NoMatch().value_or(true);
        const Result<void> begun = Then(sought, [&] { return isNew ? rows.AddNew() : rows.Edit(); });
        const Result<void> keyed = Then(begun, [&] { return rows.SetField(u"Key", key); });
        const Result<void> filled = Then(keyed, [&] { return rows.SetField(u"Code", code); });
        return Then(filled, [&] { return rows.Update(); });
    }
    static Value Stored(Recordset& rows, std::int32_t key) {
        EXPECT_TRUE(rows.Seek(u"=", key));
        EXPECT_EQ(rows.NoMatch(), false);
        return rows.Field(u"Code").value_or(Value(-1));
    }

    support::TemporaryFolder folder_;
    std::vector<std::string> notices_;
};

TEST_F(SqliteDatabaseTest, TextsComeBackUnitForUnit) {
    const Text texts[] = {
        u"",
        u"Debug.Print \"caf\u00e9 \U0001F600\"\r\nEnd",
        u"lone \r and \n and \r\r\n",
        Text(u"a\0b\0", 4),
        Text(1, u'\0'),
        Text(u"x") + char16_t{0xD800},
        Text(u"x") + char16_t{0xDC00} + char16_t{0xD800},
        u"\uFEFFmark \uFFFE \uFFFF \uFFFD \uFDD0",
        Text(3'000'000, u'\u20ac'),
    };
    std::int32_t key = 0;
    for (const Text& text : texts) {
        const auto rows = Rows();
        ASSERT_TRUE(Store(*rows, key++, text));
        ASSERT_TRUE(rows->Close());
    }
    key = 0;
    for (const Text& text : texts) {
        const Value stored = Stored(*Rows(), key++);
        ASSERT_TRUE(std::holds_alternative<Text>(stored));
        EXPECT_TRUE(std::get<Text>(stored) == text) << key - 1;
    }
}

TEST_F(SqliteDatabaseTest, SqlitesOwnProgramShowsOrdinaryTexts) {
    {
        const auto rows = Rows();
        ASSERT_TRUE(Store(*rows, 2, Text(u"Beep ' caf\u00e9\r\nEnd")));
        ASSERT_TRUE(Store(*rows, 7, Text(u"a\0b", 3)));
    }
    EXPECT_EQ(AskSqlite(File(), "SELECT Key, Code, typeof(Code) FROM CPBuffers WHERE Key = 2"),
              "2|Beep ' caf\xC3\xA9\r\nEnd|text\n");
    EXPECT_EQ(AskSqlite(File(), "SELECT Key, hex(Code), typeof(Code) FROM CPBuffers WHERE Key = 7"),
              "7|610000006200|blob\n");
    EXPECT_EQ(AskSqlite(File(), "PRAGMA integrity_check"), "ok\n");
    EXPECT_EQ(AskSqlite(File(), "SELECT name, tbl_name FROM sqlite_schema WHERE type = 'index'"),
              "Key|CPBuffers\n");
}

TEST_F(SqliteDatabaseTest, WhatOtherProgramsWroteIsRead) {
    RunSqlite(File(),
              "INSERT INTO CPBuffers VALUES (0, 'plain'), (1, NULL), (2, 17), (3, x'6100'), "
              "(5, x'61'), (6, CAST(x'61E9' AS TEXT))");
    const auto rows = Rows();
    EXPECT_EQ(Stored(*rows, 0), Value(Text(u"plain")));
    EXPECT_EQ(Stored(*rows, 1), Value(std::monostate()));
    EXPECT_EQ(Stored(*rows, 2), Value(Text(u"17")));
    EXPECT_EQ(Stored(*rows, 3), Value(Text(u"a")));
    EXPECT_EQ(Stored(*rows, 6), Value(Text(u"a\uFFFD")));
}

TEST_F(SqliteDatabaseTest, ARowThatHoldsNoTextIsNoObstacleAndCanBeWrittenAnew) {
    RunSqlite(File(), "INSERT INTO CPBuffers VALUES (2, x'61'), (5, 'five')");
    {
        const auto rows = Rows();
        ASSERT_TRUE(rows->Seek(u"=", 2));
        EXPECT_EQ(rows->NoMatch(), false);
        const Result<Value> odd = rows->Field(u"Code");
        ASSERT_FALSE(odd);
        EXPECT_EQ(odd.error().reason, "a field of it holds no text");
        ASSERT_TRUE(rows->Edit());
        EXPECT_FALSE(rows->Update()) << "without a new text";
        EXPECT_EQ(Stored(*rows, 5), Value(Text(u"five")));
        ASSERT_TRUE(Store(*rows, 2, Text(u"two")));
        ASSERT_TRUE(rows->Close());
    }
    EXPECT_EQ(AskSqlite(File(), "SELECT * FROM CPBuffers"), "2|two\n5|five\n");
}

TEST_F(SqliteDatabaseTest, ATableThatMakesNumbersOfTextsIsNotWrittenWithThem) {
    fs::remove(File());
    RunSqlite(File(),
              "CREATE TABLE CPBuffers (Key INTEGER, Code MEMO); CREATE UNIQUE INDEX Key ON CPBuffers (Key); "
              "INSERT INTO CPBuffers VALUES (1, 'kept')");
    {
        const auto rows = Rows();
        ASSERT_TRUE(Store(*rows, 1, Text(u"lost")));
        const Result<void> stored = Store(*rows, 2, Text(u"0012"));
        ASSERT_FALSE(stored);
        EXPECT_EQ(stored.error().reason, "its field Code makes numbers of texts");
        EXPECT_FALSE(rows->Close());
    }
    EXPECT_EQ(AskSqlite(File(), "SELECT * FROM CPBuffers"), "1|kept\n");
    EXPECT_TRUE(Store(*Rows(), 2, Text(u"12 lines")));
    EXPECT_EQ(AskSqlite(File(), "SELECT * FROM CPBuffers"), "1|kept\n2|12 lines\n");
}

TEST_F(SqliteDatabaseTest, ATableThatForbidsTheChangeIsTold) {
    RunSqlite(File(), "ALTER TABLE CPBuffers ADD COLUMN More TEXT NOT NULL DEFAULT 'x' CHECK (Key <> 3)");
    const auto rows = Rows();
    const Result<void> stored = Store(*rows, 3, Text(u"x"));
    ASSERT_FALSE(stored);
    EXPECT_EQ(stored.error().reason, "its own rules forbid the change");
}

TEST_F(SqliteDatabaseTest, NothingIsStoredBeforeTheRecordsetIsClosed) {
    auto rows = Rows();
    ASSERT_TRUE(Store(*rows, 0, Text(u"one")));
    ASSERT_TRUE(Store(*rows, 1, Text(u"two")));
    EXPECT_EQ(Stored(*rows, 0), Value(Text(u"one"))) << "it sees its own changes";
    EXPECT_EQ(AskSqlite(File(), "SELECT count(*) FROM CPBuffers"), "0\n");
    rows.reset();
    EXPECT_EQ(AskSqlite(File(), "SELECT count(*) FROM CPBuffers"), "2\n");
    EXPECT_EQ(folder_.Files().size(), 1U) << "no journal is left";
}

TEST_F(SqliteDatabaseTest, AClosedRecordsetIsOfNoUse) {
    const auto rows = Rows();
    EXPECT_TRUE(rows->Close());
    EXPECT_TRUE(rows->Close());
    EXPECT_FALSE(rows->SetIndex(u"Key"));
    EXPECT_FALSE(rows->Seek(u"=", 0));
    EXPECT_FALSE(rows->NoMatch());
    EXPECT_FALSE(rows->AddNew());
    EXPECT_FALSE(rows->Edit());
    EXPECT_FALSE(rows->Field(u"Code"));
    EXPECT_FALSE(rows->SetField(u"Code", Text()));
    EXPECT_FALSE(rows->Update());
}

TEST_F(SqliteDatabaseTest, WrongUseFailsAndHarmsNothing) {
    SqliteEngine engine;
    const auto database = engine.OpenDatabase(FileText()).value();
    EXPECT_FALSE(database->OpenTable(u"Others"));
    const auto rows = database->OpenTable(u"CPBuffers").value();
    EXPECT_FALSE(rows->Seek(u"=", 0)) << "no index";
    EXPECT_FALSE(rows->SetIndex(u"Code"));
    EXPECT_FALSE(rows->SetIndex(u""));
    const auto again = database->OpenTable(u"CPBuffers").value();
    EXPECT_TRUE(again->SetIndex(u"KEY"));
    EXPECT_FALSE(again->NoMatch()) << "nothing was sought";
    EXPECT_FALSE(again->Seek(u">", 0));
    EXPECT_TRUE(again->Seek(u"=", 0));
    EXPECT_EQ(again->NoMatch(), true);
    EXPECT_FALSE(again->Edit()) << "no current row";
    EXPECT_FALSE(again->Field(u"Code"));
    EXPECT_FALSE(again->SetField(u"Code", Text())) << "no row is being changed";
    EXPECT_FALSE(again->Update());
    EXPECT_TRUE(again->AddNew());
    EXPECT_FALSE(again->Update()) << "no key";
    EXPECT_FALSE(again->SetField(u"Other", Text()));
    EXPECT_FALSE(again->SetField(u"Key", Text(u"1")));
    EXPECT_FALSE(again->SetField(u"Code", 1));
    EXPECT_TRUE(again->SetField(u"key", 1));
    EXPECT_TRUE(again->SetField(u"code", Text(u"x")));
    EXPECT_TRUE(again->Update());
    EXPECT_TRUE(again->Seek(u"=", 1));
    EXPECT_EQ(again->Field(u"KEY"), Value(1));
    EXPECT_FALSE(again->Field(u"Other"));
    EXPECT_TRUE(again->Edit());
    EXPECT_FALSE(again->SetField(u"Key", 2)) << "a row keeps its key";
    EXPECT_TRUE(again->Close());
    EXPECT_EQ(AskSqlite(File(), "SELECT * FROM CPBuffers"), "1|x\n");
}

// Another program may have stored it since it was sought.
TEST_F(SqliteDatabaseTest, ANewRowOfAKeyThatThereIsTakesItsPlace) {
    RunSqlite(File(), "INSERT INTO CPBuffers VALUES (0, 'theirs')");
    const auto rows = Rows();
    ASSERT_TRUE(rows->AddNew());
    ASSERT_TRUE(rows->SetField(u"Key", 0));
    ASSERT_TRUE(rows->SetField(u"Code", Text(u"mine")));
    ASSERT_TRUE(rows->Update());
    ASSERT_TRUE(rows->Close());
    EXPECT_EQ(AskSqlite(File(), "SELECT * FROM CPBuffers"), "0|mine\n");
}

TEST_F(SqliteDatabaseTest, TwoWritersTakeTurns) {
    const auto work = [this] {
        for (int round = 0; round < 20; ++round) {
            const auto rows = Rows(std::chrono::seconds(5));
            for (std::int32_t key = 0; key < 10; ++key) {
                if (const auto stored = Store(*rows, key, PathToText(std::to_string(::getpid()))); !stored) {
                    return std::string(stored.error().reason);
                }
            }
            if (const auto closed = rows->Close(); !closed) {
                return std::string(closed.error().reason);
            }
        }
        return std::string("done");
    };
    support::OtherProcess one(work);
    support::OtherProcess two(work);
    EXPECT_EQ(one.Answer(), "done");
    EXPECT_EQ(two.Answer(), "done");
    EXPECT_EQ(AskSqlite(File(), "SELECT count(*), count(DISTINCT Code) FROM CPBuffers"), "10|1\n");
}

// Holds a lock on the file, as another program would, until it is let go of.
class LockHolder {
  public:
    explicit LockHolder(const fs::path& file) : connection_(SqliteConnection::Open(file, {}).value()) {
        EXPECT_TRUE(connection_.Run("BEGIN EXCLUSIVE"));
    }

  private:
    SqliteConnection connection_;
};

TEST_F(SqliteDatabaseTest, ALockedFileIsWaitedForAndThenGivenUp) {
    const auto rows = Rows(milliseconds(300));
    const LockHolder holder(File());
    const auto begin = std::chrono::steady_clock::now();
    const Result<void> stored = Store(*rows, 0, Text(u"x"));
    const auto waited = std::chrono::steady_clock::now() - begin;
    ASSERT_FALSE(stored);
    EXPECT_EQ(stored.error().reason, "it is locked by another program");
    EXPECT_GE(waited, milliseconds(250));
    // Ten rows do not wait ten times.
    for (std::int32_t key = 1; key < 10; ++key) {
        EXPECT_FALSE(Store(*rows, key, Text(u"x")));
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(5));
    EXPECT_EQ(OpenError(), "it is locked by another program");
}

TEST_F(SqliteDatabaseTest, AFileThatIsLockedForAMomentIsWaitedFor) {
    auto holder = std::make_unique<LockHolder>(File());
    std::jthread release([&] {
        std::this_thread::sleep_for(milliseconds(200));
        holder.reset();
    });
    const auto rows = Rows(std::chrono::seconds(5));
    EXPECT_TRUE(Store(*rows, 0, Text(u"x")));
    EXPECT_TRUE(rows->Close());
}

TEST_F(SqliteDatabaseTest, ACommitThatIsRefusedAtTheEndIsTold) {
    auto rows = Rows(milliseconds(100));
    ASSERT_TRUE(Store(*rows, 0, Text(u"x")));
    {
        // Somebody reads, so that the file cannot be changed now.
        SqliteConnection reader = SqliteConnection::Open(File(), {}).value();
        ASSERT_TRUE(reader.Run("BEGIN"));
        ASSERT_TRUE(reader.Run("SELECT * FROM CPBuffers"));
        rows.reset();
    }
    EXPECT_THAT(notices_,
                testing::ElementsAre("the changes were not stored: it is locked by another program"));
    EXPECT_EQ(AskSqlite(File(), "SELECT count(*) FROM CPBuffers"), "0\n");
}

TEST_F(SqliteDatabaseTest, WhoClosesHimselfHearsOfTheFailureAndNobodyElse) {
    const auto rows = Rows(milliseconds(50));
    ASSERT_TRUE(Store(*rows, 0, Text(u"x")));
    SqliteConnection reader = SqliteConnection::Open(File(), {}).value();
    ASSERT_TRUE(reader.Run("BEGIN"));
    ASSERT_TRUE(reader.Run("SELECT * FROM CPBuffers"));
    const Result<void> closed = rows->Close();
    ASSERT_FALSE(closed);
    EXPECT_EQ(closed.error().reason, "it is locked by another program");
    EXPECT_THAT(notices_, SizeIs(0));
}

TEST_F(SqliteDatabaseTest, AWriteProtectedFileIsReadAndNotWritten) {
    RunSqlite(File(), "INSERT INTO CPBuffers VALUES (0, 'kept')");
    fs::permissions(File(), fs::perms::owner_read);
    const std::string said = support::AsOrdinaryUser(folder_.path(), [&]() -> std::string {
        const auto rows = Rows();
        if (Stored(*rows, 0) != Value(Text(u"kept"))) {
            return "not read";
        }
        const Result<void> stored = Store(*rows, 0, Text(u"changed"));
        return stored ? "written" : std::string(stored.error().reason);
    });
    EXPECT_EQ(said, "it is write-protected");
    EXPECT_EQ(AskSqlite(File(), "SELECT Code FROM CPBuffers"), "kept\n");
}

TEST_F(SqliteDatabaseTest, AFileThatIsGoneIsNotMadeAgain) {
    SqliteEngine engine;
    const auto database = engine.OpenDatabase(FileText()).value();
    fs::remove(File());
    EXPECT_FALSE(database->OpenTable(u"CPBuffers"));
    EXPECT_FALSE(fs::exists(File()));
}

TEST_F(SqliteDatabaseTest, OnlyFilesExist) {
    SqliteEngine engine;
    EXPECT_EQ(engine.FileExists(FileText()), true);
    EXPECT_EQ(engine.FileExists(PathToText(folder_.path())), false);
    EXPECT_EQ(engine.FileExists(PathToText(folder_.path()) + u"\\assistants.mdb"), false);
    EXPECT_EQ(engine.FileExists(u"C:\\Data\\Assistants.mdb"), false);
    EXPECT_EQ(engine.FileExists(Text(u"/") + char16_t{0xD800}), false);
    fs::create_symlink("Assistants.mdb", folder_ / "link");
    fs::create_symlink("nowhere", folder_ / "dangling");
    EXPECT_EQ(engine.FileExists(PathToText(folder_.path()) + u"\\link"), true);
    EXPECT_EQ(engine.FileExists(PathToText(folder_.path()) + u"\\dangling"), false);
    EXPECT_FALSE(engine.OpenDatabase(Text(u"/") + char16_t{0xD800}));
}

TEST_F(SqliteDatabaseTest, FilesOfOtherKindsAreErrors) {
    struct Case {
        std::string bytes;
        std::string reason;
    };
    std::string damaged = folder_.Read("Assistants.mdb");
    std::fill(damaged.begin() + 100, damaged.end(), '\xA5');
    const std::string cut = folder_.Read("Assistants.mdb").substr(0, 5000);
    const Case cases[] = {
        {"", "it has no table CPBuffers"},
        {"hello", "it is no code database"},
        {std::string(100'000, 'x'), "it is no code database"},
        {"SQLite format 3", "it is no code database"},
        {folder_.Read("Assistants.mdb").substr(0, 16), "it is no code database"},
        {damaged, "it is damaged"},
        {cut, "it is damaged"},
    };
    for (const Case& c : cases) {
        folder_.Write("Assistants.mdb", c.bytes);
        EXPECT_EQ(OpenError(), c.reason) << c.bytes.size();
        EXPECT_EQ(folder_.Read("Assistants.mdb"), c.bytes);
    }
    fs::remove(File());
    EXPECT_EQ(OpenError(), "there is no such file");
    fs::create_directory(File());
    EXPECT_EQ(OpenError(), "it is a folder or a device, not a file");
    fs::remove(File());
    ASSERT_EQ(::mkfifo(File().c_str(), 0600), 0);
    EXPECT_EQ(OpenError(), "it is a folder or a device, not a file");
}

TEST_F(SqliteDatabaseTest, DatabasesOfOthersAreErrors) {
    struct Case {
        std::string sql;
        std::string reason;
    };
    const Case cases[] = {
        {"CREATE TABLE Other (Key, Code)", "it has no table CPBuffers"},
        {"CREATE TABLE Other (Key, Code); CREATE VIEW CPBuffers AS SELECT * FROM Other",
         "it has no table CPBuffers"},
        {"CREATE TABLE CPBuffers (Key)", "its table CPBuffers lacks the field Key or Code"},
        {"CREATE TABLE CPBuffers (Number, Code)", "its table CPBuffers lacks the field Key or Code"},
        {"CREATE TABLE cpbuffers (KEY, CODE)", ""},
    };
    for (const Case& c : cases) {
        fs::remove(File());
        RunSqlite(File(), c.sql);
        EXPECT_EQ(OpenError(), c.reason) << c.sql;
    }
    SqliteEngine engine;
    const auto rows = engine.OpenDatabase(FileText()).value()->OpenTable(u"CPBuffers").value();
    const Result<void> indexed = rows->SetIndex(u"Key");
    ASSERT_FALSE(indexed);
    EXPECT_EQ(indexed.error().reason, "its table CPBuffers has no such index");
}

TEST_F(SqliteDatabaseTest, DamageInsideTheFileIsAnError) {
    {
        const auto rows = Rows();
        for (std::int32_t key = 0; key < 10; ++key) {
            ASSERT_TRUE(Store(*rows, key, Text(20'000, u'x')));
        }
    }
    const std::string whole = folder_.Read("Assistants.mdb");
    int failures = 0;
    for (std::size_t page = 1; page < whole.size() / 4096; ++page) {
        std::string damaged = whole;
        std::fill_n(damaged.begin() + static_cast<std::ptrdiff_t>(page * 4096), 4096, '\xA5');
        folder_.Write("Assistants.mdb", damaged);
        SqliteEngine engine;
        const auto database = engine.OpenDatabase(FileText());
        const auto rows = database ? (*database)->OpenTable(u"CPBuffers") : std::unexpected(database.error());
        for (std::int32_t key = 0; key < 10 && rows; ++key) {
            const auto read = Then((*rows)->SetIndex(u"Key"), [&] { return (*rows)->Seek(u"=", key); });
            failures += read ? 0 : 1;
        }
        failures += rows ? 0 : 1;
    }
    EXPECT_GT(failures, 0);
}

TEST_F(SqliteDatabaseTest, WhatAForeignFileBringsIsNotRun) {
    RunSqlite(File(),
              "CREATE TABLE Log (What); CREATE TRIGGER T AFTER INSERT ON CPBuffers BEGIN INSERT INTO "
              "Log VALUES ('ran'); END");
    {
        const auto rows = Rows();
        ASSERT_TRUE(Store(*rows, 0, Text(u"x")));
    }
    EXPECT_EQ(AskSqlite(File(), "SELECT count(*) FROM Log; SELECT count(*) FROM CPBuffers"), "0\n1\n");
}

TEST(SqliteErrorTest, TellsTheReason) {
    const std::pair<int, std::string_view> cases[] = {
        {SQLITE_BUSY, "it is locked by another program"},
        {SQLITE_BUSY_SNAPSHOT, "it is locked by another program"},
        {SQLITE_LOCKED, "it is locked by another program"},
        {SQLITE_READONLY, "it is write-protected"},
        {SQLITE_READONLY_DIRECTORY, "it is write-protected"},
        {SQLITE_CORRUPT, "it is damaged"},
        {SQLITE_NOTADB, "it is no code database"},
        {SQLITE_FULL, "the disk is full"},
        {SQLITE_CANTOPEN, "it, or the journal beside it, cannot be opened"},
        {SQLITE_PERM, "access to it is denied"},
        {SQLITE_AUTH, "access to it is denied"},
        {SQLITE_IOERR_READ, "it cannot be read or written"},
        {SQLITE_CONSTRAINT, "its own rules forbid the change"},
        {SQLITE_TOOBIG, "a text is too long for it"},
        {SQLITE_MISUSE, "the database engine failed"},
    };
    for (const auto& [code, reason] : cases) {
        EXPECT_EQ(SqliteError(code).reason, reason);
        EXPECT_EQ(SqliteError(code).number, ErrorNumber::HostFailure) << reason;
    }
    EXPECT_EQ(SqliteError(SQLITE_IOERR_NOMEM).reason, "it cannot be read or written");
    EXPECT_EQ(SqliteError(SQLITE_NOMEM).reason, "there is not enough memory for it");
    EXPECT_EQ(SqliteError(SQLITE_NOMEM).number, ErrorNumber::OutOfMemory);
}

TEST(CodeDatabaseCreationTest, MakesTheFolderAndAnEmptyTable) {
    const support::TemporaryFolder folder;
    const fs::path made = folder / "a\\b/caf\xE9";
    EXPECT_EQ(CreateCodeDatabase(made), Creation::Made);
    EXPECT_EQ(AskSqlite(made / "Assistants.mdb", "SELECT count(*) FROM CPBuffers"), "0\n");
    SqliteEngine engine;
    EXPECT_TRUE(engine.OpenDatabase(FolderToText(made) + u"\\Assistants.mdb"));
}

TEST(CodeDatabaseCreationTest, WhatIsThereStays) {
    const support::TemporaryFolder folder;
    ASSERT_EQ(CreateCodeDatabase(folder.path()), Creation::Made);
    RunSqlite(folder / "Assistants.mdb", "INSERT INTO CPBuffers VALUES (3, 'kept')");
    EXPECT_EQ(CreateCodeDatabase(folder.path()), Creation::WasThere);
    EXPECT_EQ(AskSqlite(folder / "Assistants.mdb", "SELECT * FROM CPBuffers"), "3|kept\n");
}

TEST(CodeDatabaseCreationTest, AFileWithoutTheTableGetsItBesideWhatItHas) {
    const support::TemporaryFolder folder;
    folder.Write("Assistants.mdb", "");
    EXPECT_EQ(CreateCodeDatabase(folder.path()), Creation::Made);
    fs::remove(folder / "Assistants.mdb");
    RunSqlite(folder / "Assistants.mdb", "CREATE TABLE Other (x); INSERT INTO Other VALUES (1)");
    EXPECT_EQ(CreateCodeDatabase(folder.path()), Creation::Made);
    EXPECT_EQ(AskSqlite(folder / "Assistants.mdb", "SELECT x, (SELECT count(*) FROM CPBuffers) FROM Other"),
              "1|0\n");
}

TEST(CodeDatabaseCreationTest, ATableWithoutItsIndexGetsItAndKeepsItsRows) {
    const support::TemporaryFolder folder;
    RunSqlite(folder / "Assistants.mdb",
              "CREATE TABLE CPBuffers (Key, Code); INSERT INTO CPBuffers VALUES (3, 'kept')");
    EXPECT_EQ(CreateCodeDatabase(folder.path()), Creation::Made);
    EXPECT_EQ(CreateCodeDatabase(folder.path()), Creation::WasThere);
    EXPECT_EQ(AskSqlite(folder / "Assistants.mdb", "SELECT * FROM CPBuffers"), "3|kept\n");
}

TEST(CodeDatabaseCreationTest, ATableThatCannotHoldTheBuffersIsAnErrorAndStays) {
    struct Case {
        std::string sql;
        std::string reason;
    };
    const Case cases[] = {
        {"CREATE TABLE CPBuffers (Key, Words)", "its table CPBuffers lacks the field Key or Code"},
        {"CREATE TABLE CPBuffers (Number, Code)", "its table CPBuffers lacks the field Key or Code"},
        {"CREATE TABLE CPBuffers (Key, Code); INSERT INTO CPBuffers VALUES (1, 'a'), (1, 'b')",
         "its own rules forbid the change"},
        {"CREATE TABLE CPBuffers (Key, Code); CREATE INDEX Key ON CPBuffers (Code)",
         "its table CPBuffers has no such index"},
    };
    for (const Case& c : cases) {
        const support::TemporaryFolder folder;
        RunSqlite(folder / "Assistants.mdb", c.sql);
        const std::string before = folder.Read("Assistants.mdb");
        const auto made = CreateCodeDatabase(folder.path());
        ASSERT_FALSE(made) << c.sql;
        EXPECT_EQ(made.error().reason, c.reason) << c.sql;
        EXPECT_EQ(folder.Read("Assistants.mdb"), before) << c.sql;
    }
}

TEST(CodeDatabaseCreationTest, OtherFilesAreLeftAlone) {
    const support::TemporaryFolder folder;
    for (const std::string& bytes :
         {std::string("hello"), "\0\1\0\0Standard Jet DB\0" + std::string(100, 'x'),
          std::string("\0\1\0\0Standard Jet DB\0", 20)}) {
        folder.Write("Assistants.mdb", bytes);
        EXPECT_FALSE(CreateCodeDatabase(folder.path()));
        EXPECT_EQ(folder.Read("Assistants.mdb"), bytes);
    }
    folder.Write("file", "");
    EXPECT_FALSE(CreateCodeDatabase(folder / "file"));
    EXPECT_FALSE(CreateCodeDatabase(folder / "file/below"));
}

}  // namespace
}  // namespace lintara::platform
