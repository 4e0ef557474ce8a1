// Files of a project that are made to hang the command or to fill its memory.
#include "cli/numbers/number_map.h"
#include "tests/cli/command_run.h"

#include <filesystem>
#include <sys/stat.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::HasSubstr;

class HostileProject : public testing::Test {
  protected:
    void SetUp() override { test.WriteShop(); }

    CommandTest test;
};

TEST_F(HostileProject, ATemplateThatItsOwnFileNamesMustBeNoPipe) {
    ASSERT_EQ(::mkfifo(test.Path("pipe").c_str(), 0600), 0);
    test.Write(".lintara.toml", "template = \"pipe\"\n");
    const Outcome outcome = test.Run("insert @Shop.vbp --error-handlers");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("DIR/.lintara.toml:1: template: DIR/pipe is a pipe, not a file"));
}

TEST_F(HostileProject, ALargeProjectFileOfOptionsIsNotRead) {
    test.Write(".lintara.toml", std::string((1U << 20) + 1, '#'));
    const Outcome outcome = test.Run("insert @Shop.vbp --line-numbers");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("is larger than 1 MiB"));
}

TEST_F(HostileProject, TooManyPatternsAreRefused) {
    std::string patterns;
    for (int i = 0; i < 10'000; ++i) {
        patterns += "'A*', ";
    }
    test.Write(".lintara.toml", "exclude = [" + patterns + "]\n");
    EXPECT_EQ(test.Run("insert @Shop.vbp --line-numbers --check").status, 1);
    test.Write(".lintara.toml", "base = 5\nexclude = [" + patterns + "'B']\n");
    const Outcome outcome = test.Run("insert @Shop.vbp --line-numbers");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr(".lintara.toml:2: exclude has 10001 values; give at most 10000"));
}

TEST_F(HostileProject, ALargeMapIsNotRead) {
    test.Write("map.json", "{");
    std::filesystem::resize_file(test.Path("map.json"), largestMap + 1);
    const Outcome outcome = test.Run("where @Shop.vbp --map @map.json --erl 10");
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.err, HasSubstr("DIR/map.json: error: is larger than 64 MiB"));
}

TEST_F(HostileProject, AMapOfBracketsAloneIsNoMap) {
    test.Write("map.json", std::string(50'000'000, '['));
    const Outcome outcome = test.Run("where @Shop.vbp --map @map.json --erl 10");
    EXPECT_EQ(outcome.status, 3);
    EXPECT_THAT(outcome.err, HasSubstr("is no map of line numbers, or is damaged"));
}

// Handled one after the other, and not one within the other.
TEST_F(HostileProject, NestedBlocksOfADesignerNeedNoStack) {
    std::string form = "VERSION 5.00\r\nBegin VB.Form f\r\n";
    std::string ends = "End\r\n";
    for (int i = 0; i < 200'000; ++i) {
        form += "Begin VB.Frame x\r\n";
        ends += "End\r\n";
    }
    test.Write("f.frm", form + ends + "Attribute VB_Name = \"f\"\r\nSub A()\r\n    Beep\r\nEnd Sub\r\n");
    EXPECT_EQ(test.Run("insert @f.frm --line-numbers").status, 0);
    EXPECT_THAT(test.Read("f.frm"), HasSubstr("10000:     Beep"));
}

}  // namespace
}  // namespace lintara::cli
