// Journals that come with a folder from somebody else: recovery must not reach out of that folder.
#include "tests/workspace/saved_project.h"
#include "workspace/journal.h"
#include "workspace/write_file.h"

#include <string>
#include <sys/stat.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

namespace fs = std::filesystem;
using testing::HasSubstr;

constexpr const char* temporary = ".lintara-0123456789abcdef-0.tmp";

// A folder "hostile" with a project, and a folder "victim" beside it.
class HostileJournal : public testing::Test {
  protected:
    void SetUp() override {
        folder.Write("hostile/P.vbp", "Module=M; m.bas\r\n");
        folder.Write("hostile/m.bas", "Dim m\r\n");
        folder.Write("victim/v.bas", "old");
        folder.Write("victim/" + std::string(temporary), "new");
    }

    // Writes the journal of a save of one file.
    void WriteJournal(const fs::path& target, const fs::path& itsTemporary, const fs::path& backup,
                      bool committed, std::vector<fs::path> links = {}) const {
        Journal journal;
        journal.path = folder / "hostile" / journalName;
        journal.links = std::move(links);
        journal.replacements.push_back({target, itsTemporary, backup, MarkOf("old"), MarkOf("new")});
        const std::string head = JournalHead(journal);
        folder.Write("hostile/" + std::string(journalName),
                     head + (committed ? JournalCommit(journal, head) : ""));
    }

    // Opens the project, as any command does, and tells what is wrong.
    std::string Opened() {
        Workspace workspace;
        const auto opened = Open(workspace, folder / "hostile/P.vbp", {});
        return opened ? "" : Sentences(opened.error());
    }

    support::TemporaryFolder folder;
};

TEST_F(HostileJournal, ReplacesNothingOutside) {
    for (const bool committed : {true, false}) {
        WriteJournal(folder / "victim/v.bas", folder / "victim" / temporary, "", committed);
        EXPECT_EQ(Opened(), "");
        EXPECT_EQ(folder.Read("victim/v.bas"), "old");
        EXPECT_EQ(folder.Read("victim/" + std::string(temporary)), "new");
    }
}

TEST_F(HostileJournal, FollowsNoLinkOut) {
    fs::create_directory_symlink("../victim", folder / "hostile/in");
    for (const bool committed : {true, false}) {
        WriteJournal(folder / "hostile/in/v.bas", folder / "hostile/in" / temporary, "", committed);
        EXPECT_EQ(Opened(), "");
        EXPECT_EQ(folder.Read("victim/v.bas"), "old");
        EXPECT_EQ(folder.Read("victim/" + std::string(temporary)), "new");
    }
}

TEST_F(HostileJournal, KeepsNoBackupInAnotherFolder) {
    folder.Write("hostile/v.bas", "new");
    folder.Write("hostile/" + std::string(temporary), "old");
    fs::create_directory_symlink("../victim", folder / "hostile/v.bas-in");
    WriteJournal(folder / "hostile/v.bas", folder / "hostile" / temporary, folder / "hostile/v.bas-in/evil",
                 true);
    EXPECT_THAT(Opened(), HasSubstr("names files that no save would name"));
    EXPECT_FALSE(fs::exists(folder / "victim/evil"));
}

TEST_F(HostileJournal, RemovesNoLinkOfAnotherSave) {
    folder.Write("victim/" + std::string(journalLinkName), "../somewhere/.lintara-journal\n");
    WriteJournal(folder / "hostile/m.bas", folder / "hostile" / temporary, "", false,
                 {folder / "victim" / journalLinkName});
    EXPECT_EQ(Opened(), "");
    EXPECT_TRUE(fs::exists(folder / "victim" / journalLinkName));
}

// What the user himself allowed is finished: the other folder has the save's own link.
TEST_F(HostileJournal, AFolderThatVouchesForTheSaveIsPartOfIt) {
    const fs::path link = folder / "victim" / journalLinkName;
    folder.Write("victim/" + std::string(journalLinkName),
                 JournalLink(link, folder / "hostile" / journalName));
    WriteJournal(folder / "victim/v.bas", folder / "victim" / temporary, "", true, {link});
    EXPECT_EQ(Opened(), "");
    EXPECT_EQ(folder.Read("victim/v.bas"), "new");
    EXPECT_FALSE(fs::exists(link));
    EXPECT_FALSE(fs::exists(folder / "victim" / temporary));
}

// A group's other project, in whose folder nothing may be written, gets no mark of a save.
TEST_F(HostileJournal, ASaveLeavesNoMarkOutside) {
    folder.Write("victim/V.vbp", "Module=V; v.bas\r\n");
    folder.Write("hostile/G.vbg", "Project=P.vbp\r\nProject=..\\victim\\V.vbp\r\n");
    Workspace workspace;
    ASSERT_TRUE(Open(workspace, folder / "hostile/G.vbg", {}));
    ASSERT_TRUE(workspace.projects()[0]->components()[0]->module->InsertLines(Line{1}, u"'edited"));
    SaveOptions options;
    bool marked = false;
    options.beforeStep = [&] { marked |= fs::exists(folder / "victim" / journalLinkName); };
    ASSERT_TRUE(Save(workspace, options));
    EXPECT_FALSE(marked);
    EXPECT_EQ(folder.Read("hostile/m.bas"), "'edited\r\nDim m\r\n");
}

TEST(TemporaryNames, CannotBeKnownBeforehand) {
    const fs::path target = "folder/a.bas";
    EXPECT_NE(TemporaryNames().Beside(target, 0), TemporaryNames().Beside(target, 0));
    EXPECT_EQ(TemporaryNames().Beside(target, 0).parent_path(), "folder");
}

TEST(CreateNew, TakesNothingThatIsThereAndFollowsNoLink) {
    const support::TemporaryFolder folder;
    folder.Write("file", "kept");
    fs::create_symlink("file", folder / "link");
    fs::create_symlink("made", folder / "dangling");
    for (const auto* const name : {"file", "link", "dangling"}) {
        EXPECT_FALSE(CreateNew(folder / name)) << name;
    }
    EXPECT_EQ(folder.Read("file"), "kept");
    EXPECT_FALSE(fs::exists(folder / "made"));
    ASSERT_TRUE(CreateNew(folder / "new"));
    struct stat status {};
    ASSERT_EQ(::stat((folder / "new").c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

}  // namespace
}  // namespace lintara::workspace
