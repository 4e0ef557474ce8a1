#include "workspace/project_lock.h"

#include "tests/support/other_process.h"
#include "tests/support/temporary_folder.h"

#include <string>
#include <unistd.h>

#include <gtest/gtest.h>

namespace lintara::workspace {
namespace {

using support::TemporaryFolder;

// What another process gets when it asks for the lock: "" or the error.
std::string FromAnotherProcess(const std::filesystem::path& path, double seconds) {
    return support::InOtherProcess([&]() -> std::string {
        const auto lock = ProjectLock::Acquire(path, seconds);
        return lock ? "locked" : lock.error().ToString();
    });
}

class ProjectLockTest : public testing::Test {
  protected:
    ProjectLockTest() {
        folder_.Write("g.vbg", "Project=x\\x.vbp\nProject=y\\y.vbp\n");
        folder_.Write("x/x.vbp", "");
        folder_.Write("y/y.vbp", "");
        folder_.Write("x/a.bas", "");
    }
    TemporaryFolder folder_;
};

TEST_F(ProjectLockTest, LeavesNoFileBehind) {
    const auto before = folder_.Files();
    { const auto lock = ProjectLock::Acquire(folder_ / "g.vbg", 0); }
    EXPECT_EQ(folder_.Files(), before);
}

TEST_F(ProjectLockTest, KeepsAnotherProcessOutAndNamesTheHolder) {
    int toParent[2];
    int toChild[2];
    ASSERT_EQ(::pipe(toParent) + ::pipe(toChild), 0);
    support::OtherProcess holder([&] {
        const auto lock = ProjectLock::Acquire(folder_ / "x/x.vbp", 0);
        char held = lock ? '1' : '0';
        (void)!::write(toParent[1], &held, 1);
        (void)!::read(toChild[0], &held, 1);
        return std::string("ended");
    });
    char byte = 0;
    ASSERT_EQ(::read(toParent[0], &byte, 1), 1);
    ASSERT_EQ(byte, '1');
    for (const char* const path : {"x/x.vbp", "x/a.bas", "x", "g.vbg"}) {
        const auto lock = ProjectLock::Acquire(folder_ / path, 0);
        ASSERT_FALSE(lock.has_value()) << path;
        EXPECT_TRUE(lock.error().message.contains("another run is at work")) << lock.error().message;
        if (std::filesystem::exists("/proc/locks")) {
            EXPECT_TRUE(lock.error().message.contains("process " + std::to_string(holder.id())))
                << lock.error().message;
        }
    }
    EXPECT_TRUE(ProjectLock::Acquire(folder_ / "y/y.vbp", 0).has_value());
    // It is given up when the holder ends, however that comes.
    ASSERT_EQ(::write(toChild[1], &byte, 1), 1);
    EXPECT_TRUE(ProjectLock::Acquire(folder_ / "x/x.vbp", 10).has_value());
    EXPECT_EQ(holder.Answer(), "ended");
}

TEST_F(ProjectLockTest, IsSharedWithinAProcess) {
    auto outer = ProjectLock::Acquire(folder_ / "x/x.vbp", 0);
    ASSERT_TRUE(outer.has_value());
    { EXPECT_TRUE(ProjectLock::Acquire(folder_ / "g.vbg", 0).has_value()); }
    EXPECT_TRUE(ProjectLock::Acquire(folder_ / "x", 0).has_value());
}

TEST_F(ProjectLockTest, IsFreeAgainAfterItsEnd) {
    {
        const auto lock = ProjectLock::Acquire(folder_ / "x", 0);
        EXPECT_TRUE(lock.has_value());
    }
    EXPECT_EQ(FromAnotherProcess(folder_ / "x", 0), "locked");
}

TEST_F(ProjectLockTest, OfAPathThatIsNotThereIsAnError) {
    EXPECT_FALSE(ProjectLock::Acquire(folder_ / "none.vbp", 0).has_value());
}

}  // namespace
}  // namespace lintara::workspace
