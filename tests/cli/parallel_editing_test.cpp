// Components are edited several at a time. Nothing of that shows: edits, reports and refusals are those of
// one component after the other.
#include "tests/cli/command_run.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::HasSubstr;
using testing::Not;

constexpr int Components = 40;

std::string NameOf(int i) {
    return "Part" + std::to_string(i);
}

// Components of several procedures; each seventh has one that is skipped.
void WriteProject(const CommandTest& test) {
    std::string project = "Type=Exe\r\n";
    for (int i = 0; i < Components; ++i) {
        const std::string name = NameOf(i);
        project += "Module=" + name + "; " + name + ".bas\r\n";
        std::string code = "Attribute VB_Name = \"" + name + "\"\r\n";
        for (int procedure = 0; procedure <= i % 5; ++procedure) {
            const std::string number = std::to_string(procedure);
            code += "Sub Do" + number + "()\r\n    x = " + number + "\r\nEnd Sub\r\n";
        }
        if (i % 7 == 0) {
            code += "Sub Bad()\r\n10 x = 1\r\nEnd Sub\r\n";
        }
        test.Write(name + ".bas", code);
    }
    test.Write("All.vbp", project + "Name=\"All\"\r\n");
}

TEST(ParallelEditing, EditsAndReportsAreThoseOfOneComponentAfterTheOther) {
    for (const std::string work : {"--line-numbers", "--error-handlers --line-numbers"}) {
        CommandTest together;
        WriteProject(together);
        const Outcome all = together.Run("insert @All.vbp " + work);
        CommandTest apart;
        WriteProject(apart);
        std::string warnings;
        for (int i = 0; i < Components; ++i) {
            warnings += apart.Run("insert @All.vbp " + work + " --component " + NameOf(i)).err;
        }
        EXPECT_EQ(together.Files(), apart.Files()) << work;
        EXPECT_EQ(Replaced(all.err, together.folder().string(), ""),
                  Replaced(warnings, apart.folder().string(), ""))
            << work;
        EXPECT_THAT(all.err, HasSubstr("Sub Bad in Part35")) << work;
    }
}

TEST(ParallelEditing, RemovalOfNumbersRestoresEveryByte) {
    CommandTest test;
    WriteProject(test);
    const auto before = test.Files();
    ASSERT_EQ(test.Run("insert @All.vbp --line-numbers").status, 0);
    EXPECT_NE(test.Files(), before);
    EXPECT_EQ(test.Run("remove @All.vbp --line-numbers").status, 0);
    EXPECT_EQ(test.Files(), before);
}

TEST(ParallelEditing, OfSeveralRefusalsTheFirstComponentsIsTold) {
    CommandTest test;
    WriteProject(test);
    std::string longBody = "Sub Long()\r\n";
    for (int i = 0; i < 30; ++i) {
        longBody += "    x = 1\r\n";
    }
    longBody += "End Sub\r\n";
    for (const int i : {38, 12, 25}) {
        test.Write(NameOf(i) + ".bas", "Attribute VB_Name = \"" + NameOf(i) + "\"\r\n" + longBody);
    }
    const auto before = test.Files();
    const Outcome outcome = test.Run("insert @All.vbp --line-numbers --base 99980 --step 1");
    EXPECT_EQ(outcome.status, 2);
    EXPECT_THAT(outcome.err, HasSubstr("Sub Long in Part12 would get the number"));
    EXPECT_THAT(outcome.err, Not(HasSubstr("Part25")));
    EXPECT_EQ(test.Files(), before);
}

}  // namespace
}  // namespace lintara::cli
