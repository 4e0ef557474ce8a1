// lintara buffer, and --buffer as a source of text.

#include "platform/database_file.h"
#include "platform/jet_reader.h"
#include "platform/path_text.h"
#include "platform/sqlite_connection.h"
#include "platform/toml_settings.h"
#include "tests/cli/command_run.h"
#include "tests/support/jet_file.h"
#include "tests/support/other_process.h"
#include "tests/support/sqlite_shell.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

namespace lintara::cli {
namespace {

namespace fs = std::filesystem;

using support::AskSqlite;
using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

constexpr SettingName FolderSetting = {u"Tarnwick", u"Assistants", u"CodeDbPath"};

class BufferCommandTest : public testing::Test, public CommandTest {
  protected:
    using CommandTest::Run;

    // A code database that the settings remember.
    void Init() { ASSERT_EQ(Run("buffer init @db").status, 0); }
    [[nodiscard]] fs::path File(std::string_view folder = "db") const {
        return fs::path(Path(folder)) / "Assistants.mdb";
    }
    [[nodiscard]] std::optional<Text> RememberedFolder() const {
        return settings->Find(FolderSetting).value();
    }
    void Remember(const fs::path& path) const {
        EXPECT_TRUE(settings->Save(FolderSetting, platform::PathToText(path)));
    }
    Outcome Set(const std::string& number, const std::string& text) {
        input = text;
        Outcome outcome = Run({"buffer", "set", number, "-"});
        input.clear();
        return outcome;
    }
    std::string Get(const std::string& number) { return Run({"buffer", "get", number}).out; }
};

TEST_F(BufferCommandTest, InitMakesADatabaseAndRemembersIt) {
    const Outcome outcome = Run("buffer init @new/db");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "");
    EXPECT_EQ(outcome.err, "lintara: DIR/new/db/Assistants.mdb was made and is the user's code database\n");
    EXPECT_EQ(RememberedFolder(), platform::PathToText(Path("new/db")));
    EXPECT_EQ(Run("buffer path").out, "DIR/new/db/Assistants.mdb\n");
    EXPECT_EQ(AskSqlite(File("new/db"), "SELECT count(*) FROM CPBuffers"), "0\n");
}

TEST_F(BufferCommandTest, InitKeepsWhatIsThereAndTellsWhatItTakesThePlaceOf) {
    Init();
    ASSERT_EQ(Set("1", "kept").status, 0);
    EXPECT_THAT(Run("buffer init @db/").err, StartsWith("lintara: DIR/db/Assistants.mdb was there and is"));
    EXPECT_EQ(Get("1"), "kept\n");
    EXPECT_THAT(Run("buffer init @other").err, HasSubstr("from now on, instead of DIR/db/Assistants.mdb\n"));
    EXPECT_EQ(Get("1"), "\n");
}

TEST_F(BufferCommandTest, InitLeavesOtherFilesAlone) {
    Write("db/Assistants.mdb", "hello");
    const Outcome outcome = Run("buffer init @db");
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(outcome.err, "lintara: error: DIR/db/Assistants.mdb: another file is there\n");
    EXPECT_EQ(Read("db/Assistants.mdb"), "hello");
    EXPECT_EQ(RememberedFolder(), std::nullopt);
}

TEST_F(BufferCommandTest, GetGivesBackWhatSetStored) {
    Init();
    struct Case {
        std::string given;
        std::string got;
    };
    const Case cases[] = {
        {"one line", "one line\n"},
        {"ends in a break\n", "ends in a break\n"},
        {"one\r\ntwo\nthree\n", "one\r\ntwo\r\nthree\n"},
        {"", "\n"},
        {"\n", "\n"},
        {"\n\n", "\r\n\n"},
        {"  caf\xC3\xA9 \xF0\x9F\x98\x80\t", "  caf\xC3\xA9 \xF0\x9F\x98\x80\t\n"},
        {"latin-1: \xE9", "latin-1: \xC3\xA9\n"},
        {std::string("a\0b", 3), std::string("a\0b\n", 4)},
    };
    for (const Case& c : cases) {
        const Outcome set = Set("5", c.given);
        EXPECT_EQ(set.status, 0);
        EXPECT_EQ(set.out + set.err, "");
        const Outcome got = Run("buffer get 5");
        EXPECT_EQ(got.out, c.got);
        EXPECT_EQ(got.err, "");
        ASSERT_EQ(Set("6", got.out).status, 0);
        EXPECT_EQ(Get("6"), c.got) << "there and back again";
    }
}

TEST_F(BufferCommandTest, GetWarnsOfWhatSetWouldNotGiveBack) {
    Init();
    ASSERT_EQ(AskSqlite(File(),
                        "INSERT INTO CPBuffers VALUES (0, 'a' || char(10) || 'b'), (1, x'00D8'), "
                        "(2, 'fine')"),
              "");
    for (const char* number : {"0", "1"}) {
        const Outcome got = Run({"buffer", "get", number});
        EXPECT_EQ(got.status, 0);
        EXPECT_THAT(got.err, HasSubstr("does not give back as they are"));
    }
    EXPECT_EQ(Run("buffer get 2").err, "");
}

TEST_F(BufferCommandTest, SetReadsAFileOrStandardInput) {
    Init();
    Write("code.txt", "Beep\nBeep\n");
    EXPECT_EQ(Run("buffer set 0 @code.txt").status, 0);
    EXPECT_EQ(Get("0"), "Beep\r\nBeep\n");
    input = "from here";
    EXPECT_EQ(Run("buffer set 0").status, 0);
    EXPECT_EQ(Get("0"), "from here\n");
    const Outcome missing = Run("buffer set 0 @none.txt");
    EXPECT_EQ(missing.status, 3);
    EXPECT_THAT(missing.err, HasSubstr("DIR/none.txt"));
    EXPECT_EQ(Get("0"), "from here\n");
}

TEST_F(BufferCommandTest, SetChangesNoOtherBuffer) {
    Init();
    for (int number = 0; number <= 9; ++number) {
        ASSERT_EQ(Set(std::to_string(number), "was " + std::to_string(number)).status, 0);
    }
    ASSERT_EQ(Set("4", "changed").status, 0);
    ASSERT_EQ(Run("buffer clear 7").status, 0);
    std::string expected;
    for (int number = 0; number <= 9; ++number) {
        expected += std::to_string(number) + "|" +
                    (number == 4   ? "changed"
                     : number == 7 ? ""
                                   : "was " + std::to_string(number)) +
                    "\n";
    }
    EXPECT_EQ(AskSqlite(File(), "SELECT * FROM CPBuffers ORDER BY Key"), expected);
}

TEST_F(BufferCommandTest, ListsThemAll) {
    Init();
    Set("1", "only \x1B[31mone");
    Set("3", "first\nsecond\n\n");
    EXPECT_EQ(Run("buffer list").out,
              "0  (empty)\n"
              "1  1 line   only \\x1b[31mone\n"
              "2  (empty)\n"
              "3  2 lines  first\n"
              "4  (empty)\n5  (empty)\n6  (empty)\n7  (empty)\n8  (empty)\n9  (empty)\n");
    const auto json = nlohmann::json::parse(Run("buffer list --json").out);
    EXPECT_EQ(json["database"], "DIR/db/Assistants.mdb");
    ASSERT_EQ(json["buffers"].size(), 10U);
    EXPECT_EQ(json["buffers"][3], nlohmann::json::parse(R"({"buffer":3,"code":"first\r\nsecond\r\n"})"));
    EXPECT_EQ(json["buffers"][9], nlohmann::json::parse(R"({"buffer":9,"code":""})"));
}

TEST_F(BufferCommandTest, OtherNumbersAreUsageErrors) {
    Init();
    for (const char* command : {"get", "set", "clear"}) {
        const Outcome ten = Run({"buffer", command, "10"});
        EXPECT_EQ(ten.status, 2);
        EXPECT_THAT(ten.err, HasSubstr("buffer 10 lives only in the memory of a session"));
        for (const char* number : {"11", "-1", "x", "", "1.5", "99999999999"}) {
            EXPECT_EQ(Run({"buffer", command, "--", number}).status, 2) << number;
        }
    }
}

TEST_F(BufferCommandTest, WithoutADatabaseItSaysWhatToDo) {
    for (const char* line :
         {"buffer list", "buffer get 1", "buffer set 1", "buffer clear 1", "buffer path"}) {
        const Outcome outcome = Run(line);
        EXPECT_EQ(outcome.status, 3) << line;
        EXPECT_EQ(outcome.out, "");
        EXPECT_THAT(outcome.err, AllOf(StartsWith("lintara: error: no code database is known; "),
                                       HasSubstr("'lintara buffer init DIR'"), HasSubstr("--database DIR")));
    }
    EXPECT_EQ(RememberedFolder(), std::nullopt);
}

TEST_F(BufferCommandTest, ARememberedFolderWithoutItsFileIsNamed) {
    Remember(Path("gone"));
    const Outcome outcome = Run("buffer list");
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.err,
                StartsWith("lintara: error: DIR/gone/Assistants.mdb: there is no such file, where the user's "
                           "setting CodeDbPath leads; "));
    EXPECT_EQ(RememberedFolder(), platform::PathToText(Path("gone")));
}

TEST_F(BufferCommandTest, TheDatabaseOptionIsTheAnswerWhereNoDatabaseIsKnown) {
    ASSERT_EQ(platform::CreateCodeDatabase(Path("db")), platform::Creation::Made);
    EXPECT_EQ(Run("buffer path --database @db").out, "DIR/db/Assistants.mdb\n");
    EXPECT_EQ(RememberedFolder(), platform::PathToText(Path("db")));
    Remember(Path("gone"));
    EXPECT_EQ(Run("buffer path --database @db/").out, "DIR/db/Assistants.mdb\n");
    EXPECT_EQ(RememberedFolder(), platform::PathToText(Path("db")));
}

TEST_F(BufferCommandTest, TheDatabaseOptionCountsOnceWhereAnotherIsKnown) {
    Init();
    ASSERT_EQ(Set("1", "mine").status, 0);
    ASSERT_EQ(platform::CreateCodeDatabase(Path("other")), platform::Creation::Made);
    EXPECT_EQ(Run("buffer path --database @other").out, "DIR/other/Assistants.mdb\n");
    input = "theirs";
    EXPECT_EQ(Run("buffer set 1 - --database @other").status, 0);
    EXPECT_EQ(Run("buffer get 1 --database @other").out, "theirs\n");
    EXPECT_EQ(Get("1"), "mine\n");
    EXPECT_EQ(RememberedFolder(), platform::PathToText(Path("db")));
}

TEST_F(BufferCommandTest, AFolderWithoutADatabaseIsNeitherUsedNorRemembered) {
    const Outcome outcome = Run("buffer set 1 --database @none");
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(outcome.err, "lintara: error: DIR/none/Assistants.mdb: there is no such file\n");
    EXPECT_EQ(RememberedFolder(), std::nullopt);
    EXPECT_FALSE(fs::exists(Path("none")));
}

TEST_F(BufferCommandTest, TheDatabaseBesideTheProgramIsFoundAndRemembered) {
    ASSERT_EQ(platform::CreateCodeDatabase(Path("bin")), platform::Creation::Made);
    libraryFolder = platform::PathToText(Path("bin"));
    EXPECT_EQ(Run("buffer path").out, "DIR/bin/Assistants.mdb\n");
    EXPECT_EQ(RememberedFolder(), libraryFolder);
}

TEST_F(BufferCommandTest, AtATerminalItAsksUntilTheAnswerIsOfUse) {
    ASSERT_EQ(platform::CreateCodeDatabase(Path("db")), platform::Creation::Made);
    Remember(Path("gone"));
    answers = {Path("none"), Path("db")};
    const Outcome outcome = Run("buffer path");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.out, "DIR/db/Assistants.mdb\n");
    EXPECT_EQ(outcome.err,
              "There is no DIR/gone/Assistants.mdb.\n"
              "Folder of the code database Assistants.mdb (empty: none): "
              "DIR/none/Assistants.mdb: there is no such file\n"
              "Another folder (empty: none): ");
    EXPECT_EQ(RememberedFolder(), platform::PathToText(Path("db")));
    answers = {"not asked again"};
    EXPECT_EQ(Run("buffer path").err, "");
}

TEST_F(BufferCommandTest, WhoGivesUpAtTheTerminalGetsTheError) {
    for (const std::vector<std::string>& given : {std::vector<std::string>{""}, {}}) {
        answers = given;
        const Outcome outcome = Run("buffer list");
        EXPECT_EQ(outcome.status, 3);
        EXPECT_THAT(outcome.err, HasSubstr("lintara: error: no code database is known"));
    }
    EXPECT_EQ(RememberedFolder(), std::nullopt);
}

TEST_F(BufferCommandTest, FolderNamesMayHoldAnyBytes) {
    const std::string folder = Path("a\\b \xE9 caf\xC3\xA9\n");
    ASSERT_EQ(Run({"buffer", "init", folder}).status, 0);
    ASSERT_EQ(Set("1", "kept").status, 0);
    EXPECT_EQ(Get("1"), "kept\n");
    EXPECT_TRUE(fs::exists(folder + "/Assistants.mdb"));
    // The file of settings holds it, too.
    settings = std::make_shared<platform::TomlSettings>(Path("config"));
    ASSERT_EQ(Run({"buffer", "init", folder}).status, 0);
    settings = std::make_shared<platform::TomlSettings>(Path("config"));
    EXPECT_EQ(Get("1"), "kept\n");
}

TEST_F(BufferCommandTest, NothingClaimsToBeStoredThatIsNot) {
    Init();
    ASSERT_EQ(Set("1", "kept").status, 0);
    {
        auto other = platform::SqliteConnection::Open(File(), {}).value();
        ASSERT_TRUE(other.Run("BEGIN EXCLUSIVE"));
        for (const char* line : {"buffer set 1", "buffer clear 1", "buffer get 1", "buffer list"}) {
            const Outcome locked = Run(line);
            EXPECT_EQ(locked.status, 3) << line;
            EXPECT_EQ(locked.err, "lintara: error: DIR/db/Assistants.mdb: it is locked by another program\n");
        }
    }
    {
        // Somebody reads: it can be opened, and changed, but not stored.
        auto other = platform::SqliteConnection::Open(File(), {}).value();
        ASSERT_TRUE(other.Run("BEGIN"));
        ASSERT_TRUE(other.Run("SELECT * FROM CPBuffers"));
        EXPECT_EQ(Set("1", "lost").status, 3);
        EXPECT_EQ(Get("1"), "kept\n");
    }
    EXPECT_EQ(Get("1"), "kept\n");
}

TEST_F(BufferCommandTest, AFailureIsToldOnce) {
    Init();
    ASSERT_EQ(AskSqlite(File(), "ALTER TABLE CPBuffers ADD COLUMN More CHECK (Key <> 3)"), "");
    const Outcome outcome = Set("3", "lost");
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(outcome.err, "lintara: error: DIR/db/Assistants.mdb: its own rules forbid the change\n");
}

TEST_F(BufferCommandTest, ARowThatHoldsNoTextIsToldAndCanBeCleared) {
    Init();
    ASSERT_EQ(AskSqlite(File(), "INSERT INTO CPBuffers VALUES (2, x'61'), (5, 'five')"), "");
    for (const char* line : {"buffer list", "buffer get 2"}) {
        const Outcome outcome = Run(line);
        EXPECT_EQ(outcome.status, 3) << line;
        EXPECT_EQ(outcome.err, "lintara: error: DIR/db/Assistants.mdb: a field of it holds no text\n");
    }
    EXPECT_EQ(Get("5"), "five\n");
    EXPECT_EQ(Run("buffer clear 2").status, 0);
    EXPECT_EQ(Get("2"), "\n");
    EXPECT_EQ(Run("buffer list").status, 0);
}

TEST_F(BufferCommandTest, InitDoesNotRememberATableThatCannotHoldTheBuffers) {
    fs::create_directory(Path("db"));
    ASSERT_EQ(AskSqlite(File(), "CREATE TABLE CPBuffers (Key, Words)"), "");
    const Outcome outcome = Run("buffer init @db");
    EXPECT_EQ(outcome.status, 3);
    EXPECT_EQ(outcome.err,
              "lintara: error: DIR/db/Assistants.mdb: its table CPBuffers lacks the field Key or Code\n");
    EXPECT_EQ(RememberedFolder(), std::nullopt);
}

TEST_F(BufferCommandTest, ThePathIsAsItIsExceptAtATerminal) {
    ASSERT_EQ(Run({"buffer", "init", Path("a\x1B[31mb")}).status, 0);
    EXPECT_EQ(Run("buffer path").out, "DIR/a\x1B[31mb/Assistants.mdb\n");
    outIsTerminal = true;
    EXPECT_EQ(Run("buffer path").out, "DIR/a\\x1b[31mb/Assistants.mdb\n");
}

TEST_F(BufferCommandTest, AWriteProtectedDatabaseIsReadAndNotWritten) {
    Init();
    ASSERT_EQ(Set("1", "kept").status, 0);
    fs::permissions(File(), fs::perms::owner_read);
    const std::string said = support::AsOrdinaryUser(folder(), [&] {
        const Outcome set = Set("1", "lost");
        return std::to_string(set.status) + set.err + Get("1");
    });
    EXPECT_EQ(said, "3lintara: error: DIR/db/Assistants.mdb: it is write-protected\nkept\n");
}

TEST_F(BufferCommandTest, AFolderThatMayNotBeEnteredIsNotTakenForAnEmptyOne) {
    Init();
    const auto outcomes = [&] {
        return Run("buffer list --database @db").err + Run("buffer init @db").err +
               Run("buffer import @db/Assistants.mdb").err;
    };
    fs::permissions(Path("db"), fs::perms::none);
    const std::string said = support::AsOrdinaryUser(folder(), outcomes);
    fs::permissions(Path("db"), fs::perms::owner_all);
    const std::string denied = "lintara: error: DIR/db/Assistants.mdb: access to its folder is denied\n";
    EXPECT_EQ(said,
              denied +
                  "lintara: error: DIR/db/Assistants.mdb: it, or the journal beside it, cannot be opened\n" +
                  denied);
}

TEST_F(BufferCommandTest, FilesOfOtherKindsAreErrors) {
    struct Case {
        std::string bytes;
        std::string message;
    };
    const Case cases[] = {
        {"", "it has no table CPBuffers"},
        {"hello", "it is no code database"},
        {std::string("\0\1\0\0Standard Jet DB\0", 20),
         "it is a code database of the old format; make a new "
         "one with 'lintara buffer init', then 'lintara buffer "
         "import' copies the buffers"},
    };
    for (const Case& c : cases) {
        Write("db/Assistants.mdb", c.bytes);
        Remember(Path("db"));
        for (const char* line : {"buffer list", "buffer set 1", "buffer get 1 --database @db"}) {
            const Outcome outcome = Run(line);
            EXPECT_EQ(outcome.status, 3) << line;
            EXPECT_EQ(outcome.err, "lintara: error: DIR/db/Assistants.mdb: " + c.message + "\n");
            EXPECT_EQ(Read("db/Assistants.mdb"), c.bytes);
        }
    }
}

TEST_F(BufferCommandTest, ImportRefusesWhatIsNoReadableFileOfTheOldFormat) {
    Init();
    ASSERT_EQ(Set("1", "kept").status, 0);
    Write("old.mdb", "hello");
    EXPECT_EQ(Run("buffer import @old.mdb").err,
              "lintara: error: DIR/old.mdb: it is no code database of the old format\n");
    EXPECT_EQ(Run("buffer import @none.mdb").err, "lintara: error: DIR/none.mdb: there is no such file\n");
    const std::string beginning("\0\1\0\0Standard Jet DB\0\1", 21);
    Write("old.mdb", beginning);
    const Outcome outcome = Run("buffer import @old.mdb --replace");
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.err, StartsWith("lintara: error: DIR/old.mdb: "));
    EXPECT_EQ(Read("old.mdb"), beginning);
    EXPECT_EQ(Get("1"), "kept\n");
}

// The file is one that the tests build page by page.
TEST_F(BufferCommandTest, ImportCopiesTheBuffersOfAHandBuiltFileOfTheOldFormat) {
    if (!platform::HasJetReader()) {
        GTEST_SKIP() << "built without libmdb";
    }
    Init();
    const std::string old = support::JetFile({.codeByKey = {{2, u"two\r\nlines"}, {5, u"five"}}});
    Write("old/Assistants.mdb", old);
    const Outcome outcome = Run("buffer import @old/Assistants.mdb");
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "lintara: 2 buffers were imported into DIR/db/Assistants.mdb\n");
    EXPECT_EQ(AskSqlite(File(), "SELECT count(*) FROM CPBuffers; SELECT * FROM CPBuffers WHERE Code <> ''"),
              "10\n2|two\r\nlines\n5|five\n");
    EXPECT_EQ(Read("old/Assistants.mdb"), old);
    EXPECT_EQ(Run("buffer import @old/Assistants.mdb").status, 0) << "nothing is lost";

    ASSERT_EQ(Set("5", "changed").status, 0);
    ASSERT_EQ(Set("7", "new").status, 0);
    const Outcome refused = Run("buffer import @old/Assistants.mdb");
    EXPECT_EQ(refused.status, 3);
    EXPECT_THAT(refused.err, HasSubstr("other texts are in the buffers 5, 7; --replace"));
    EXPECT_EQ(Get("5"), "changed\n");
    EXPECT_EQ(Run("buffer import @old/Assistants.mdb --replace").status, 0);
    EXPECT_EQ(Get("5"), "five\n");
    EXPECT_EQ(Get("7"), "\n");
}

class BufferSourceTest : public BufferCommandTest {
  protected:
    void SetUp() override {
        Init();
        WriteShop();
    }
};

TEST_F(BufferSourceTest, CustomCodeComesFromABuffer) {
    ASSERT_EQ(Set("3", "Debug.Print \"{MemberName}\"").status, 0);
    const Outcome outcome = Run("custom insert @Main.bas --id 5 --buffer 3 --procedure Sell");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(Read("Main.bas"), HasSubstr("Debug.Print \"Sell\"\r\n"));
    EXPECT_THAT(Run("custom insert @Main.bas --id 6 --buffer 4").err,
                HasSubstr("--buffer: there is no code"));
}

TEST_F(BufferSourceTest, AHandlersTemplateComesFromABuffer) {
    ASSERT_EQ(Set("3", "    MsgBox \"{ComponentName}\"").status, 0);
    const Outcome outcome = Run("insert @Main.bas --error-handlers --buffer 3");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(Read("Main.bas"), HasSubstr("hErr:\r\n    MsgBox \"Main\"\r\n"));
    EXPECT_THAT(Run("insert @Main.bas --error-handlers --buffer 4").err,
                HasSubstr("--buffer: the template is empty"));
    EXPECT_EQ(Run("insert @Main.bas --line-numbers --buffer 3").status, 2);
}

TEST_F(BufferSourceTest, ABufferGoesBeforeTheProjectFileAndTheSettings) {
    ASSERT_EQ(Set("3", "    MsgBox \"buffer\"").status, 0);
    Write("file.txt", "    MsgBox \"file\"\r\n");
    Write(".lintara.toml", "[insert]\ntemplate = \"file.txt\"\n");
    const Outcome outcome = Run("insert @Main.bas --error-handlers --buffer 3");
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_THAT(Read("Main.bas"), AllOf(HasSubstr("\"buffer\""), Not(HasSubstr("\"file\""))));
}

TEST_F(BufferSourceTest, TwoSourcesAreAUsageError) {
    ASSERT_EQ(Set("3", "x").status, 0);
    Write("code.txt", "Beep");
    for (const char* line : {"custom insert @Main.bas --id 5 --buffer 3 --code @code.txt",
                             "insert @Main.bas --error-handlers --buffer 3 --template @code.txt"}) {
        const Outcome outcome = Run(line);
        EXPECT_EQ(outcome.status, 2) << line;
        EXPECT_THAT(outcome.err, HasSubstr("two sources of one text"));
    }
    EXPECT_EQ(Run("custom insert @Main.bas --id 5 --buffer 10").status, 2);
}

TEST_F(BufferSourceTest, TemplatesAreExpandedAndGeneratedFromABuffer) {
    ASSERT_EQ(Set("3", "Debug.Print \"{MemberName}\"").status, 0);
    EXPECT_EQ(Run("template expand @Main.bas --at Main:11 --buffer 3").out, "Debug.Print \"Sell\"");
    ASSERT_EQ(Set("4", "Debug.Print \"Sell\"").status, 0);
    EXPECT_EQ(Run("template generate @Main.bas --at Main:11 --buffer 4").out, "Debug.Print \"{MemberName}\"");
}

TEST_F(BufferSourceTest, WithoutADatabaseTheCodeStaysAsItWas) {
    Remember(Path("gone"));
    const std::string before = Read("Main.bas");
    for (const char* line :
         {"custom insert @Main.bas --id 5 --buffer 3", "insert @Main.bas --error-handlers --buffer 3",
          "template expand @Main.bas --at Main:11 --buffer 3"}) {
        const Outcome outcome = Run(line);
        EXPECT_EQ(outcome.status, 3) << line;
        EXPECT_THAT(outcome.err, HasSubstr("DIR/gone/Assistants.mdb: there is no such file"));
    }
    EXPECT_EQ(Read("Main.bas"), before);
}

}  // namespace
}  // namespace lintara::cli
