// Code databases of the old format. No packaged program writes that format, so what stands here for such
// files is made by hand: byte streams that begin like one.

#include "platform/jet_import.h"

#include "platform/database_kind.h"
#include "platform/jet_reader.h"
#include "platform/path_text.h"
#include "platform/sqlite_engine.h"
#include "tests/support/jet_file.h"
#include "tests/support/random.h"
#include "tests/support/temporary_folder.h"

#include <csignal>
#include <cstdio>
#include <map>
#include <sys/resource.h>
#include <sys/stat.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::platform {
namespace {

namespace fs = std::filesystem;

using std::chrono::milliseconds;
using testing::HasSubstr;

// What files of the old format begin with; `version` tells its age.
std::string JetBeginning(char version = 1, std::string_view signature = "Standard Jet DB") {
    std::string bytes("\0\1\0\0", 4);
    bytes += signature;
    bytes += std::string("\0", 1);
    bytes += version;
    return bytes;
}

TEST(DatabaseKindTest, TellsKindsByTheirFirstBytes) {
    const support::TemporaryFolder folder;
    const auto kind = [&](const std::string& bytes) { return KindOfDatabase(folder.Write("f", bytes)); };
    EXPECT_EQ(kind(""), DatabaseKind::Sqlite);
    EXPECT_EQ(kind(std::string("SQLite format 3\0 and more", 25)), DatabaseKind::Sqlite);
    EXPECT_EQ(kind(JetBeginning()), DatabaseKind::Jet);
    EXPECT_EQ(kind(JetBeginning(0) + std::string(5000, 'x')), DatabaseKind::Jet);
    EXPECT_EQ(kind(JetBeginning(2, "Standard ACE DB")), DatabaseKind::Jet);
    EXPECT_EQ(kind("\1\2\3\4Standard Jet DB"), DatabaseKind::Jet);
    EXPECT_EQ(kind("Standard Jet DB"), DatabaseKind::Other);
    EXPECT_EQ(kind("1234Standard Jet D"), DatabaseKind::Other);
    EXPECT_EQ(kind("1234"), DatabaseKind::Other);
    EXPECT_EQ(kind("x"), DatabaseKind::Other);
}

TEST(JetImportTest, HandMadeBeginningsOfTheOldFormatAreRecognisedRefusedAndNeverChanged) {
    const support::TemporaryFolder folder;
    for (const std::string& bytes : {JetBeginning(), JetBeginning(0), JetBeginning(2, "Standard ACE DB"),
                                     JetBeginning() + std::string(64 * 1024, '\0')}) {
        const fs::path file = folder.Write("Assistants.mdb", bytes);
        const auto longAgo = fs::file_time_type::clock::now() - std::chrono::hours(1000);
        fs::last_write_time(file, longAgo);
        const auto before = fs::last_write_time(file);

        SqliteEngine engine;
        EXPECT_EQ(engine.FileExists(PathToText(file)), true);
        const auto opened = engine.OpenDatabase(PathToText(folder.path()) + u"\\Assistants.mdb");
        ASSERT_FALSE(opened);
        EXPECT_THAT(std::string(opened.error().reason), HasSubstr("lintara buffer import"));
        EXPECT_FALSE(ReadJetBuffers(file));

        EXPECT_EQ(folder.Read("Assistants.mdb"), bytes);
        EXPECT_EQ(fs::last_write_time(file), before);
        EXPECT_EQ(folder.Files().size(), 1U);
    }
}

TEST(JetImportTest, FilesOfOtherKindsAreNotRead) {
    const support::TemporaryFolder folder;
    const auto error = [](const fs::path& file) { return ReadJetBuffers(file).error(); };
    EXPECT_EQ(error(folder / "none"), "there is no such file");
    EXPECT_EQ(error(folder.path()), "it is a folder or a device, not a file");
    EXPECT_EQ(error(folder.Write("f", "")), "it is no code database of the old format");
    EXPECT_EQ(error(folder.Write("f", "hello")), "it is no code database of the old format");
}

class HandBuiltJetFileTest : public testing::Test {
  protected:
    void SetUp() override {
        if (!HasJetReader()) {
            GTEST_SKIP() << "built without libmdb";
        }
    }

    // Damage is found soon, and what hangs is not waited for.
    auto Read(const std::string& bytes) {
        return ReadJetBuffers(folder_.Write("old.mdb", bytes), {.time = milliseconds(500)});
    }

    support::TemporaryFolder folder_;
};

TEST_F(HandBuiltJetFileTest, TextsComeOutOfTheirRows) {
    const support::JetTable table{.codeByKey = {{0, u"Debug.Print \"caf\u00e9 \U0001F600\"\r\nEnd"},
                                                {1, std::u16string(u"a\0b", 3) + char16_t{0xD800}},
                                                {2, u""},
                                                {5, std::u16string(300, u'x')},
                                                {6, std::u16string(1'500, u'\u20ac')},
                                                {7, std::u16string(100'000, u'y') + u"end"},
                                                {9, u"last"},
                                                {10, u"never stored"},
                                                {-1, u"nor this"}}};
    const std::string bytes = support::JetFile(table);
    const auto read = ReadJetBuffers(folder_.Write("old.mdb", bytes));
    ASSERT_TRUE(read) << read.error();
    for (std::int32_t key = 0; key <= 9; ++key) {
        const auto& text = (*read)[static_cast<std::size_t>(key)];
        const auto row = table.codeByKey.find(key);
        EXPECT_TRUE(text.value_or(u"") == (row == table.codeByKey.end() ? u"" : row->second)) << key;
    }
    EXPECT_EQ((*read)[3], std::nullopt);
    EXPECT_EQ(folder_.Read("old.mdb"), bytes);
}

TEST_F(HandBuiltJetFileTest, PackedTextsAreUnpacked) {
    const auto read = Read(support::JetFile({.bytesByKey = {{0,
                                                             "\xFF\xFE"
                                                             "Beep\r\nEnd \xE9"},
                                                            {1, std::string("\xFF\xFE"
                                                                            "ab\0\xAC\x20\0c",
                                                                            9)},
                                                            {2, "\xFF\xFE"},
                                                            {3, "a"}}}));
    ASSERT_TRUE(read) << read.error();
    EXPECT_EQ((*read)[0], u"Beep\r\nEnd \u00e9");
    EXPECT_EQ((*read)[1], u"ab\u20acc");
    EXPECT_EQ((*read)[2], u"");
    EXPECT_EQ((*read)[3], u"") << "half a character";
}

TEST_F(HandBuiltJetFileTest, OtherTablesAndFieldsAreErrors) {
    EXPECT_EQ(Read(support::JetFile({.name = u"Others"})).error(), "it has no table CPBuffers");
    EXPECT_EQ(Read(support::JetFile({.keyField = u"Number"})).error(),
              "its table CPBuffers lacks the field Key or Code");
    EXPECT_EQ(Read(support::JetFile({.codeField = u"Text"})).error(),
              "its table CPBuffers lacks the field Key or Code");
    EXPECT_TRUE(Read(support::JetFile({})));
}

// In this process, as these files are whole: what reads them is counted and watched by tools here only.
TEST_F(HandBuiltJetFileTest, TheReaderGivesTheTextsByTheirKeys) {
    const auto rows = [&](const support::JetTable& table) {
        return ReadJetRows(folder_.Write("old.mdb", support::JetFile(table)));
    };
    EXPECT_EQ(rows({.codeByKey = {{0, u"one\r\ntwo"},
                                  {3, std::u16string(9'000, u'\u20ac')},
                                  {9, u""},
                                  {10, u"never stored"}}}),
              (std::map<int, Text>{{0, u"one\r\ntwo"}, {3, Text(9'000, u'\u20ac')}, {9, u""}}));
    EXPECT_EQ(rows({.bytesByKey = {{1, std::string("\xFF\xFE"
                                                   "ab\0\xAC\x20\0c",
                                                   9)},
                                   {2, "a"}}}),
              (std::map<int, Text>{{1, u"ab\u20acc"}, {2, u""}}));
    EXPECT_EQ(rows({.name = u"Others"}).error(), "it has no table CPBuffers");
    EXPECT_EQ(rows({.keyField = u"Number"}).error(), "its table CPBuffers lacks the field Key or Code");
}

TEST_F(HandBuiltJetFileTest, TimeAndTextsAreLimited) {
    const fs::path file = folder_.Write("old.mdb", support::JetFile({.codeByKey = {{0, u"a longer text"}}}));
    const auto error = [&](const IsolationLimits& limits) { return ReadJetBuffers(file, limits).error(); };
    EXPECT_EQ(error({.time = milliseconds(0)}), "it is damaged: reading it came to no end");
    EXPECT_EQ(error({.answer = 10}), "it holds more text than the buffers can");
}

TEST_F(HandBuiltJetFileTest, DamagedAndTruncatedOnesHarmNobody) {
    const std::string whole = support::JetFile(
        {.codeByKey = {{0, u"one"}, {1, std::u16string(1'500, u'x')}, {2, std::u16string(9'000, u'y')}}});
    support::Random random(30);
    int failures = 0;
    for (int round = 0; round < 80; ++round) {
        std::string damaged = whole;
        if (round % 4 == 0) {
            damaged.resize(random.Below(damaged.size() - 32) + 32);
        }
        for (std::size_t i = 1 + random.Below(20); i > 0; --i) {
            damaged[32 + random.Below(damaged.size() - 32)] = static_cast<char>(random.Below(256));
            damaged[std::min(damaged.size() - 1, random.Below(7) * 4096 + 32 + random.Below(100))] =
                static_cast<char>(random.Below(256));
        }
        const auto read = Read(damaged);
        failures += read ? 0 : 1;
        EXPECT_TRUE(read || read.error().starts_with("it")) << read.error();
        EXPECT_EQ(folder_.Read("old.mdb"), damaged);
    }
    EXPECT_GT(failures, 10);
}

// Byte streams that begin like a file of the old format and go on at random, or end early: an error each, in
// bounded time, and this process lives on.
TEST(JetImportTest, HandMadeDamagedAndTruncatedStreamsAreErrors) {
    if (!HasJetReader()) {
        GTEST_SKIP() << "built without libmdb";
    }
    const support::TemporaryFolder folder;
    support::Random random(20);
    const IsolationLimits limits{.time = milliseconds(500)};
    for (int round = 0; round < 60; ++round) {
        std::string bytes = JetBeginning(static_cast<char>(round % 3));
        const std::size_t size = bytes.size() + random.Below(round % 2 == 0 ? 200 : 40 * 4096);
        while (bytes.size() < size) {
            bytes += random.Below(4) == 0 ? static_cast<char>(random.Below(256)) : '\0';
        }
        // Pages that claim to be tables and data pages.
        for (std::size_t page = 2 * 4096; page + 2 < bytes.size(); page += 4096) {
            bytes[page] = random.Below(2) == 0 ? '\1' : '\2';
            bytes[page + 1] = '\1';
        }
        const auto read = ReadJetBuffers(folder.Write("f", bytes), limits);
        ASSERT_FALSE(read) << round;
        EXPECT_THAT(read.error(), testing::StartsWith("it ")) << round;
    }
}

TEST(IsolatedCallTest, GivesTheAnswer) {
    EXPECT_EQ(CallIsolated([] { return std::string("done\0\n", 6); }), std::string("done\0\n", 6));
    EXPECT_EQ(CallIsolated([] { return std::string(); }), "");
    const std::string large(5'000'000, 'x');
    EXPECT_TRUE(CallIsolated([&] { return large; }) == large);
}

TEST(IsolatedCallTest, ChangesNothingHere) {
    const support::TemporaryFolder folder;
    int value = 1;
    const auto answer = CallIsolated([&] {
        value = 2;
        std::puts("printed");
        std::fflush(stdout);
        std::FILE* file = std::fopen((folder / "f").c_str(), "w");
        if (file != nullptr) {
            std::signal(SIGXFSZ, SIG_IGN);
            std::fputs("text", file);
            std::fclose(file);
        }
        return std::string("done");
    });
    EXPECT_EQ(answer, "done");
    EXPECT_EQ(value, 1);
    EXPECT_TRUE(!fs::exists(folder / "f") || folder.Read("f").empty());
}

TEST(IsolatedCallTest, ACrashIsAnError) {
    const std::function<std::string()> crashes[] = {
        []() -> std::string {
            std::raise(SIGSEGV);
            return "alive";
        },
        []() -> std::string { std::abort(); },
        []() -> std::string { ::_exit(0); },
        []() -> std::string { throw std::runtime_error("thrown"); },
    };
    for (const auto& crash : crashes) {
        EXPECT_EQ(CallIsolated(crash), std::unexpected(IsolationFailure::Died));
    }
}

TEST(IsolatedCallTest, TimeAndAnswersAreLimited) {
    const IsolationLimits limits{.time = milliseconds(200), .answer = 1000};
    EXPECT_EQ(CallIsolated(
                  [] {
                      std::this_thread::sleep_for(std::chrono::seconds(60));
                      return std::string();
                  },
                  limits),
              std::unexpected(IsolationFailure::TimedOut));
    EXPECT_EQ(CallIsolated([] { return std::string(10'000'000, 'x'); }, limits),
              std::unexpected(IsolationFailure::AnswerTooBig));
    EXPECT_EQ(CallIsolated([] { return std::string(1000, 'x'); }, limits), std::string(1000, 'x'));
}

TEST(IsolatedCallTest, WithoutAPipeNothingIsStarted) {
    rlimit before{};
    ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &before), 0);
    const rlimit none{.rlim_cur = 0, .rlim_max = before.rlim_max};
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &none), 0);
    const auto answer = CallIsolated([] { return std::string("done"); });
    ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &before), 0);
    EXPECT_EQ(answer, std::unexpected(IsolationFailure::NotStarted));
}

#ifndef __SANITIZE_ADDRESS__
TEST(IsolatedCallTest, MemoryIsLimited) {
    const IsolationLimits limits{.memory = std::size_t{64} << 20};
    const auto eat = [](std::size_t bytes) {
        return [bytes] { return std::to_string(std::vector<char>(bytes, 'x').back()); };
    };
    EXPECT_EQ(CallIsolated(eat(std::size_t{1} << 20), limits), std::to_string('x'));
    EXPECT_EQ(CallIsolated(eat(std::size_t{256} << 20), limits), std::unexpected(IsolationFailure::Died));
}
#endif

}  // namespace
}  // namespace lintara::platform
