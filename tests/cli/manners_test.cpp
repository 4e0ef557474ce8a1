// What users of formatters expect of a command: standard input and output, lists of names, going on after
// errors.
#include "tests/cli/command_run.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace lintara::cli {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class Manners : public testing::Test {
  protected:
    void SetUp() override { test.WriteShop(); }

    CommandTest test;
};

constexpr const char* Plain = "Attribute VB_Name = \"A\"\r\nSub A()\r\n    x = 1\r\nEnd Sub\r\n";
constexpr const char* Numbered = "Attribute VB_Name = \"A\"\r\nSub A()\r\n10000:     x = 1\r\nEnd Sub\r\n";

TEST_F(Manners, ListPrintsTheNamesOfTheFilesThatWouldChange) {
    const auto before = test.Files();
    const Outcome listed = test.Run("insert @Shop.vbp --line-numbers --list");
    EXPECT_EQ(listed.status, 0);
    EXPECT_EQ(listed.out, "DIR/Main.bas\nDIR/lib/Stock.bas\n");
    EXPECT_EQ(test.Files(), before);
    EXPECT_EQ(test.Run("remove @Shop.vbp --line-numbers --list").out, "");
}

TEST_F(Manners, ListAndCheckTogetherTellByTheStatusToo) {
    EXPECT_EQ(test.Run("insert @Shop.vbp --line-numbers --list --check").status, 1);
    const Outcome clean = test.Run("remove @Shop.vbp --line-numbers --list --check");
    EXPECT_EQ(clean.status, 0);
    EXPECT_EQ(clean.out, "");
}

TEST_F(Manners, StandardInputIsEditedToStandardOutput) {
    const auto before = test.Files();
    test.input = Plain;
    const Outcome edited = test.Run("insert - --stdin-filename Shop.bas --line-numbers");
    EXPECT_EQ(edited.status, 0) << edited.err;
    EXPECT_EQ(edited.out, Numbered);
    EXPECT_EQ(edited.err, "");
    test.input = Numbered;
    EXPECT_EQ(test.Run("remove - --stdin-filename Shop.bas --line-numbers").out, Plain);
    EXPECT_EQ(test.Files(), before);
}

TEST_F(Manners, StandardInputComesOutAsItIsWhenThereIsNothingToDo) {
    test.input = Plain;
    EXPECT_EQ(test.Run("remove - --stdin-filename a.bas --line-numbers").out, Plain);
    test.input = "";
    EXPECT_EQ(test.Run("remove - --stdin-filename a.bas --line-numbers").out, "");
}

TEST_F(Manners, StandardInputWithCheckDiffAndList) {
    test.input = Plain;
    const Outcome checked = test.Run("insert - --stdin-filename a.bas --line-numbers --check");
    EXPECT_EQ(checked.status, 1);
    EXPECT_THAT(checked.out, HasSubstr("a.bas: 1 line would change"));
    EXPECT_THAT(test.Run("insert - --stdin-filename a.bas --line-numbers --diff").out,
                HasSubstr("+10000:     x = 1"));
    EXPECT_EQ(test.Run("insert - --stdin-filename a.bas --line-numbers --list").out, "a.bas\n");
}

TEST_F(Manners, StandardInputThatIsNoComponentWritesNothing) {
    test.input = Plain;
    const Outcome unknown = test.Run("insert - --stdin-filename notes.txt --line-numbers");
    EXPECT_EQ(unknown.status, 3);
    EXPECT_EQ(unknown.out, "");
    EXPECT_THAT(unknown.err, HasSubstr("notes.txt: error: is no name of a component"));
    test.input = "VERSION 5.00\r\nBegin VB.Form F\r\n";
    const Outcome open = test.Run("insert - --stdin-filename F.frm --line-numbers");
    EXPECT_EQ(open.status, 3);
    EXPECT_EQ(open.out, "");
    EXPECT_THAT(open.err, HasSubstr("F.frm:"));
}

TEST_F(Manners, StandardInputAndItsNameGoTogether) {
    EXPECT_THAT(test.Run("insert - --line-numbers").err, HasSubstr("say with --stdin-filename"));
    EXPECT_THAT(test.Run("insert @Shop.vbp --stdin-filename a.bas --line-numbers").err,
                HasSubstr("give - as PATH"));
    EXPECT_THAT(test.Run("insert - --stdin-filename a.bas --line-numbers --output @out").err,
                HasSubstr("neither --output nor --backup"));
    EXPECT_THAT(test.Run("insert - --stdin-filename a.bas --line-numbers --json").err, HasSubstr("--check"));
}

TEST_F(Manners, KeepGoingLeavesOutWhatCannotBeRead) {
    test.Write("Main.bas", std::string("Attribute VB_Name = \"Main\"\r\nSub A()\r\n\0\r\nEnd Sub\r\n", 44));
    const std::string main = test.Read("Main.bas");
    const std::string stock = test.Read("lib/Stock.bas");
    const Outcome stopped = test.Run("insert @Shop.vbp --line-numbers");
    EXPECT_EQ(stopped.status, 3);
    EXPECT_EQ(test.Read("lib/Stock.bas"), stock);
    const Outcome went = test.Run("insert @Shop.vbp --line-numbers --keep-going");
    EXPECT_EQ(went.status, 3);
    EXPECT_THAT(went.err, HasSubstr("DIR/Main.bas:3: error: "));
    EXPECT_THAT(went.out, StartsWith("Numbered "));
    EXPECT_EQ(test.Read("Main.bas"), main);
    EXPECT_NE(test.Read("lib/Stock.bas"), stock);
}

TEST_F(Manners, KeepGoingTellsErrorsInTheReport) {
    test.Write("Main.bas", std::string("\0", 1));
    const Outcome went = test.Run("insert @Shop.vbp --line-numbers --keep-going --json");
    EXPECT_EQ(went.status, 3);
    EXPECT_THAT(went.out, HasSubstr("\"status\": 3"));
    EXPECT_THAT(went.out, HasSubstr("Main.bas"));
    EXPECT_THAT(went.out, HasSubstr("\"written\": true"));
}

TEST_F(Manners, KeepGoingCopiesWhatItCannotReadAsItIs) {
    test.Write("Main.bas", std::string("\0", 1));
    const Outcome went = test.Run("insert @Shop.vbp --line-numbers --keep-going --output @out");
    EXPECT_EQ(went.status, 3);
    EXPECT_EQ(test.Read("out/Main.bas"), std::string("\0", 1));
    EXPECT_THAT(test.Read("out/lib/Stock.bas"), HasSubstr("10000: "));
}

TEST_F(Manners, KeepGoingLeavesOutWhatIsMissing) {
    std::filesystem::remove(test.Path("Main.bas"));
    EXPECT_EQ(test.Run("insert @Shop.vbp --line-numbers --output @out").status, 3);
    const Outcome went = test.Run("insert @Shop.vbp --line-numbers --keep-going --output @out");
    EXPECT_EQ(went.status, 3);
    EXPECT_THAT(went.err, HasSubstr("error: the component \"Main.bas\" is missing"));
    EXPECT_FALSE(test.Files().contains("out/Main.bas"));
    EXPECT_THAT(test.Read("out/lib/Stock.bas"), HasSubstr("10000: "));
}

TEST_F(Manners, KeepGoingWithSkipMissingWarnsOfWhatIsMissing) {
    std::filesystem::remove(test.Path("Main.bas"));
    const Outcome went = test.Run("insert @Shop.vbp --line-numbers --keep-going --skip-missing");
    EXPECT_EQ(went.status, 0);
    EXPECT_THAT(went.err, HasSubstr("warning: the component \"Main.bas\" is missing"));
}

TEST_F(Manners, KeepGoingWithoutProblemsIsDone) {
    const Outcome went = test.Run("insert @Shop.vbp --line-numbers --keep-going");
    EXPECT_EQ(went.status, 0);
    EXPECT_THAT(went.err, Not(HasSubstr("error")));
}

}  // namespace
}  // namespace lintara::cli
