// Symbolic links to project files: what such a file names lies beside the file, not beside the link.
#include "tests/support/other_process.h"
#include "tests/support/temporary_folder.h"
#include "workspace/descriptor.h"
#include "workspace/open.h"
#include "workspace/project_folders.h"
#include "workspace/project_lock.h"
#include "workspace/save.h"

#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <unistd.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

namespace fs = std::filesystem;

class ProjectLink : public testing::Test {
  protected:
    void SetUp() override {
        folder.Write("shop/Shop.vbp", "Name=\"Shop\"\r\nModule=Main; Main.bas\r\n");
        folder.Write("shop/Main.bas", "Sub A()\r\n    Beep\r\nEnd Sub\r\n");
        folder.Write("shop/All.vbg", "VBGROUP 5.0\r\nStartupProject=Shop.vbp\r\n");
        fs::create_directory(folder / "links");
        fs::create_symlink("../shop/Shop.vbp", folder / "links/Here.vbp");
        fs::create_symlink("../shop/All.vbg", folder / "links/All.vbg");
    }

    support::TemporaryFolder folder;
};

TEST_F(ProjectLink, IsOpenedAsTheFileThatItNames) {
    for (const auto* const name : {"links/Here.vbp", "links/All.vbg"}) {
        Workspace workspace;
        const auto opened = Open(workspace, folder / name, {});
        ASSERT_TRUE(opened) << opened.error().front().ToString();
        ASSERT_EQ(workspace.projects().size(), 1U);
        EXPECT_EQ(workspace.projects()[0]->name(), u"Shop");
        EXPECT_EQ(workspace.projects()[0]->path().parent_path(), fs::canonical(folder / "shop"));
        EXPECT_EQ(workspace.projects()[0]->components().size(), 1U);
    }
}

TEST_F(ProjectLink, OfAGroupsProjectIsFollowed) {
    folder.Write("group/G.vbg", "VBGROUP 5.0\r\nProject=Linked.vbp\r\n");
    fs::create_symlink("../shop/Shop.vbp", folder / "group/Linked.vbp");
    Workspace workspace;
    const auto opened = Open(workspace, folder / "group/G.vbg", {});
    ASSERT_TRUE(opened) << opened.error().front().ToString();
    EXPECT_EQ(workspace.projects()[0]->components().size(), 1U);
    const auto folders = ProjectFolders(folder / "group/G.vbg");
    ASSERT_TRUE(folders);
    EXPECT_THAT(*folders, testing::ElementsAre(folder / "group", fs::canonical(folder / "shop")));
}

// Whether another opening of the folder could take the lock on it.
bool IsFree(const fs::path& folder) {
    const Descriptor descriptor(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return ::flock(descriptor.get(), LOCK_EX | LOCK_NB) == 0;
}

TEST_F(ProjectLink, IsLockedWithTheProject) {
    EXPECT_TRUE(IsFree(folder / "shop"));
    const auto lock = ProjectLock::Acquire(folder / "links/Here.vbp", 0);
    ASSERT_TRUE(lock);
    EXPECT_FALSE(IsFree(folder / "shop"));
    EXPECT_TRUE(IsFree(folder / "links"));
}

TEST_F(ProjectLink, LeadsToTheRecoveryOfAnInterruptedSave) {
    // A save that dies when its journal is there.
    const std::string answer = support::InOtherProcess([&]() -> std::string {
        Workspace workspace;
        if (!Open(workspace, folder / "shop/Shop.vbp", {}) ||
            !workspace.projects()[0]->components()[0]->module->ReplaceLine(Line{1}, u"Sub B()")) {
            return "not opened";
        }
        SaveOptions options;
        int steps = 0;
        options.beforeStep = [&] {
            if (++steps == 2) {
                ::_exit(0);
            }
        };
        return Save(workspace, options) ? "saved" : "refused";
    });
    ASSERT_EQ(answer, "") << "the save was not interrupted";
    const auto recovered = Recover(folder / "links/Here.vbp");
    ASSERT_TRUE(recovered);
    EXPECT_EQ(recovered->size(), 1U);
    EXPECT_EQ(folder.Files().size(), 5U) << "nothing is left behind";
}

TEST_F(ProjectLink, ThatLeadsNowhereIsAnError) {
    fs::create_symlink("nothing.vbp", folder / "links/Broken.vbp");
    EXPECT_EQ(WithoutProjectLink(folder / "links/Broken.vbp"), folder / "links/Broken.vbp");
    Workspace workspace;
    const auto opened = Open(workspace, folder / "links/Broken.vbp", {});
    ASSERT_FALSE(opened);
    EXPECT_THAT(opened.error().front().ToString(), testing::HasSubstr("links/Broken.vbp: cannot be opened"));
}

// Going on after a save.
TEST_F(ProjectLink, SavedEditsCountAsLoaded) {
    Workspace workspace;
    ASSERT_TRUE(Open(workspace, folder / "links/Here.vbp", {}));
    const Component& component = *workspace.projects()[0]->components()[0];
    ASSERT_TRUE(component.module->ReplaceLine(Line{2}, u"    Stop"));
    ASSERT_TRUE(Save(workspace, {}));
    AcceptSaved(workspace);
    EXPECT_FALSE(component.module->edited());
    EXPECT_EQ(component.module->originalBytes(), "Sub A()\r\n    Stop\r\nEnd Sub\r\n");
    EXPECT_TRUE(ChangedFiles(workspace).empty());
    ASSERT_TRUE(component.module->DeleteLines(Line{2}, 1));
    ASSERT_TRUE(Save(workspace, {}));
    EXPECT_EQ(folder.Read("shop/Main.bas"), "Sub A()\r\nEnd Sub\r\n");
}

}  // namespace
}  // namespace lintara::workspace
