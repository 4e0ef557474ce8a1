// Who may read what the command writes.
#include "tests/cli/command_run.h"
#include "tests/support/other_process.h"

#include <sys/stat.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

namespace fs = std::filesystem;

mode_t ModeOf(const fs::path& path) {
    struct stat status {};
    return ::lstat(path.c_str(), &status) == 0 ? status.st_mode & 07777U : 0;
}

// Runs in another process whose files everybody may read and write, unless the program says otherwise.
std::string WithMask(mode_t mask, const std::function<std::string()>& work) {
    return support::InOtherProcess([&] {
        ::umask(mask);
        return work();
    });
}

TEST(PrivateFiles, WhatIsKeptForTheUserIsForHimAlone) {
    CommandTest test;
    test.WriteShop();
    const std::string errors = WithMask(0, [&]() -> std::string {
        const Outcome outcome = test.Run("insert @Shop.vbp --line-numbers --at Main:5");
        std::string readable;
        std::size_t files = 0;
        for (const auto& entry : fs::recursive_directory_iterator(test.stateFolder())) {
            files += entry.is_regular_file() ? 1U : 0U;
            if ((ModeOf(entry.path()) & 077U) != 0) {
                readable += entry.path().string() + "\n";
            }
        }
        // A record for undo and the history.
        return outcome.status == 0 && files >= 2 ? readable : "not run: " + outcome.err;
    });
    EXPECT_EQ(errors, "");
}

TEST(PrivateFiles, EditedFilesKeepTheirModes) {
    CommandTest test;
    test.WriteShop();
    ::chmod(test.Path("Main.bas").c_str(), 0640);
    ::chmod(test.Path("lib/Stock.bas").c_str(), 0664);
    for (const mode_t mask : {mode_t{0}, mode_t{077}}) {
        (void)WithMask(mask, [&]() -> std::string {
            return test.Run("insert @Shop.vbp --line-numbers --backup .bak").err;
        });
        EXPECT_EQ(ModeOf(test.Path("Main.bas")), 0640U);
        EXPECT_EQ(ModeOf(test.Path("lib/Stock.bas")), 0664U);
        EXPECT_EQ(ModeOf(test.Path("Main.bas.bak")), 0640U);
        (void)test.Run("remove @Shop.vbp --line-numbers");
    }
}

TEST(PrivateFiles, CopiesGiveNoRightsThatTheUserTakesAway) {
    CommandTest test;
    test.WriteShop();
    ::chmod(test.Path("Main.bas").c_str(), 0666);
    ::chmod(test.Path("lib/Stock.bas").c_str(), 04755);
    for (const mode_t mask : {mode_t{022}, mode_t{077}}) {
        const std::string out = "copy" + std::to_string(mask);
        EXPECT_EQ(
            WithMask(mask,
                     [&]() -> std::string {
                         return test.Run("insert @Shop.vbp --line-numbers --quiet --output @" + out).err;
                     }),
            "");
        EXPECT_EQ(ModeOf(test.Path(out + "/Main.bas")), 0666U & ~mask);
        EXPECT_EQ(ModeOf(test.Path(out + "/lib/Stock.bas")), 0755U & ~mask)
            << "set-user-ID does not go along";
        EXPECT_EQ(ModeOf(test.Path(out + "/lib")), 0777U & ~mask);
    }
}

}  // namespace
}  // namespace lintara::cli
