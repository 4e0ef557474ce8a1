// What the last editing command changed comes back, or nothing does.
#include "cli/project/undo_store.h"
#include "tests/cli/command_run.h"

#include <filesystem>
#include <fstream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::HasSubstr;
using testing::StartsWith;
using workspace::ReplacedFile;

class UndoCommand : public testing::Test {
  protected:
    void SetUp() override { test.WriteShop(); }

    CommandTest test;
};

TEST_F(UndoCommand, RestoresEveryFileOfTheLastCommand) {
    const auto before = test.Files();
    ASSERT_EQ(test.Run("insert @Shop.vbp --line-numbers").status, 0);
    ASSERT_NE(test.Files(), before);
    const Outcome undone = test.Run("undo @Shop.vbp");
    EXPECT_EQ(undone.status, 0) << undone.err;
    EXPECT_EQ(undone.out, "Undid \"lintara insert\": restored 2 files.\n");
    EXPECT_EQ(test.Files(), before);
}

TEST_F(UndoCommand, UndoesTheLastOfSeveralCommandsOnly) {
    ASSERT_EQ(test.Run("insert @Shop.vbp --line-numbers").status, 0);
    const auto numbered = test.Files();
    ASSERT_EQ(test.Run("remove @Shop.vbp --line-numbers --component Main").status, 0);
    EXPECT_EQ(test.Run("undo @Shop.vbp").out, "Undid \"lintara remove\": restored 1 file.\n");
    EXPECT_EQ(test.Files(), numbered);
    EXPECT_THAT(test.Run("undo @Shop.vbp").out, StartsWith("Nothing to undo: "));
    EXPECT_EQ(test.Files(), numbered);
}

TEST_F(UndoCommand, CommandsThatWriteNothingAreNotRemembered) {
    const auto before = test.Files();
    ASSERT_EQ(test.Run("insert @Shop.vbp --line-numbers").status, 0);
    for (const std::string line :
         {"remove @Shop.vbp --line-numbers --check", "remove @Shop.vbp --line-numbers --diff",
          "remove @Shop.vbp --line-numbers --list", "insert @Shop.vbp --line-numbers",
          "remove @Shop.vbp --line-numbers --procedure Nobody"}) {
        (void)test.Run(line);
    }
    EXPECT_EQ(test.Run("undo @Shop.vbp").status, 0);
    EXPECT_EQ(test.Files(), before);
}

TEST_F(UndoCommand, AChangeSinceThenIsNotLost) {
    ASSERT_EQ(test.Run("insert @Shop.vbp --line-numbers").status, 0);
    test.Write("Main.bas", test.Read("Main.bas") + "' typed since\r\n");
    const auto before = test.Files();
    const Outcome refused = test.Run("undo @Shop.vbp");
    EXPECT_EQ(refused.status, 3);
    EXPECT_EQ(refused.out, "");
    EXPECT_THAT(refused.err,
                HasSubstr("DIR/Main.bas: error: was changed since \"lintara insert\" edited it"));
    EXPECT_EQ(test.Files(), before);
    // Once the change is taken back, the command can be undone after all.
    test.Write("Main.bas", Replaced(test.Read("Main.bas"), "' typed since\r\n", ""));
    EXPECT_EQ(test.Run("undo @Shop.vbp").status, 0);
}

TEST_F(UndoCommand, AFileThatIsGoneIsNamed) {
    ASSERT_EQ(test.Run("insert @Shop.vbp --line-numbers").status, 0);
    std::filesystem::remove(test.folder() / "lib/Stock.bas");
    const auto before = test.Files();
    const Outcome refused = test.Run("undo @Shop.vbp");
    EXPECT_EQ(refused.status, 3);
    EXPECT_THAT(refused.err, HasSubstr("DIR/lib/Stock.bas: error: "));
    EXPECT_EQ(test.Files(), before);
}

TEST_F(UndoCommand, FindsTheProjectUnderAnotherSpellingOfItsPath) {
    const auto before = test.Files();
    ASSERT_EQ(test.Run("insert @Shop.vbp --line-numbers").status, 0);
    EXPECT_EQ(test.Run("undo @lib/../Shop.vbp").status, 0);
    EXPECT_EQ(test.Files(), before);
}

TEST_F(UndoCommand, KeepsFileModes) {
    std::filesystem::permissions(test.folder() / "Main.bas", std::filesystem::perms(0640));
    ASSERT_EQ(test.Run("insert @Shop.vbp --line-numbers").status, 0);
    ASSERT_EQ(test.Run("undo @Shop.vbp").status, 0);
    EXPECT_EQ(std::filesystem::status(test.folder() / "Main.bas").permissions(),
              std::filesystem::perms(0640));
}

TEST_F(UndoCommand, WhatIsKeptIsForTheUserAlone) {
    ASSERT_EQ(test.Run("insert @Shop.vbp --line-numbers").status, 0);
    std::size_t records = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(test.stateFolder())) {
        if (entry.is_regular_file()) {
            ++records;
            EXPECT_EQ(entry.status().permissions(), std::filesystem::perms(0600)) << entry.path();
        }
    }
    EXPECT_EQ(records, 1U);
}

TEST_F(UndoCommand, ADamagedRecordRestoresNothing) {
    ASSERT_EQ(test.Run("insert @Shop.vbp --line-numbers").status, 0);
    const auto numbered = test.Files();
    std::filesystem::path record;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(test.stateFolder())) {
        record = entry.is_regular_file() ? entry.path() : record;
    }
    std::filesystem::resize_file(record, std::filesystem::file_size(record) - 3);
    const Outcome refused = test.Run("undo @Shop.vbp");
    EXPECT_EQ(refused.status, 3);
    EXPECT_THAT(refused.err, HasSubstr("is damaged"));
    EXPECT_EQ(test.Files(), numbered);
}

TEST_F(UndoCommand, AStateFolderThatCannotBeUsedWarnsOnly) {
    std::filesystem::create_directories(test.stateFolder());
    std::ofstream(test.stateFolder() / "undo") << "a file";
    const Outcome edited = test.Run("insert @Shop.vbp --line-numbers");
    EXPECT_EQ(edited.status, 0);
    EXPECT_THAT(edited.err, HasSubstr("will not find this command"));
}

// A file that held `content` and was replaced.
ReplacedFile Replaced(const support::TemporaryFolder& folder, const std::string& name,
                      const std::string& content, const workspace::ContentMark& after) {
    folder.Write(name, content);
    return {folder.path() / "the file", folder.path() / name, workspace::MarkOf(content), after};
}

TEST(UndoRecords, ComeBackWithAnyBytes) {
    const support::TemporaryFolder folder;
    const UndoStore store(folder.path() / "a/b");
    const std::string content("a\0b\r\n", 5);
    std::vector<ReplacedFile> files = {Replaced(folder, "old", content, {7, 0xFFFFFFFFFFFFFFFFU}),
                                       Replaced(folder, "empty", "", {})};
    files[0].path = "/x/\xff\n y";
    ASSERT_TRUE(store.Write("p", "insert", files));
    const auto read = store.Read("p");
    ASSERT_TRUE(read && *read);
    ASSERT_EQ((*read)->files.size(), 2U);
    EXPECT_EQ((*read)->command, "insert");
    EXPECT_EQ((*read)->files[0].path, files[0].path);
    EXPECT_EQ((*read)->files[0].content, content);
    EXPECT_EQ((*read)->files[0].after, files[0].after);
    EXPECT_FALSE(store.Read("q")->has_value());
    store.Forget("p");
    EXPECT_FALSE(store.Read("p")->has_value());
}

TEST(UndoRecords, AreKeptOfTheProjectsEditedLast) {
    const support::TemporaryFolder folder;
    folder.Write("undo/notes.txt", "no record");
    const UndoStore store(folder.path());
    const auto now = std::filesystem::file_time_type::clock::now();
    for (int i = 0; i < 25; ++i) {
        // Each a minute later than the one before it.
        for (const auto& entry : std::filesystem::directory_iterator(folder.path() / "undo")) {
            const auto written = i == 0 ? now : entry.last_write_time();
            std::filesystem::last_write_time(entry.path(), written - std::chrono::minutes(1));
        }
        ASSERT_TRUE(store.Write("/p" + std::to_string(i), "insert", {}));
    }
    for (int i = 0; i < 25; ++i) {
        const auto record = store.Read("/p" + std::to_string(i));
        ASSERT_TRUE(record) << i;
        EXPECT_EQ(record->has_value(), i >= 5) << i;
    }
    EXPECT_EQ(folder.Files().size(), mostUndoRecords + 1);
}

TEST(UndoRecords, AreNotWrittenOfWhatIsNoLongerThere) {
    const support::TemporaryFolder folder;
    const UndoStore store(folder.path());
    const std::vector<ReplacedFile> files = {Replaced(folder, "old", "content", {1, 2})};
    ASSERT_TRUE(store.Write("p", "insert", files));
    folder.Write("old", "changed");
    const auto written = store.Write("p", "insert", files);
    ASSERT_FALSE(written);
    EXPECT_THAT(written.error(), HasSubstr("held cannot be read any more"));
    EXPECT_FALSE(store.Read("p")->has_value());
    std::filesystem::remove(files[0].old);
    EXPECT_FALSE(store.Write("p", "insert", files));
}

TEST(UndoRecords, CutOffAnywhereAreDamaged) {
    const support::TemporaryFolder folder;
    const UndoStore store(folder.path());
    const std::vector<ReplacedFile> files = {Replaced(folder, "old", "content", {1, 2})};
    ASSERT_TRUE(store.Write("p", "insert", files));
    const std::filesystem::path file = std::filesystem::directory_iterator(folder.path() / "undo")->path();
    for (auto size = std::filesystem::file_size(file); size-- > 0;) {
        std::filesystem::resize_file(file, size);
        EXPECT_FALSE(store.Read("p")) << size;
    }
}

TEST(UndoRecords, WithAnyByteChangedAreDamaged) {
    const support::TemporaryFolder folder;
    const UndoStore store(folder.path());
    const std::vector<ReplacedFile> files = {Replaced(folder, "old", "content", {1, 2})};
    ASSERT_TRUE(store.Write("p", "insert", files));
    const std::filesystem::path file = std::filesystem::directory_iterator(folder.path() / "undo")->path();
    const std::string name = "undo" / file.filename();
    const std::string whole = folder.Read(name);
    for (std::size_t i = 0; i < whole.size(); ++i) {
        std::string bytes = whole;
        bytes[i] = static_cast<char>(bytes[i] ^ 1);
        folder.Write(name, bytes);
        EXPECT_FALSE(store.Read("p")) << i;
    }
}

}  // namespace
}  // namespace lintara::cli
